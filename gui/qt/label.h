#pragma once

#include "gui/component/label.h"
#include "gui/qt/qtcomponent.h"

#include <QLabel>

namespace tvw::gui::component::qt {

class Label : public QtComponent<QLabel, component::Label>
{
public:
    explicit Label(const util::xml::Element& element);

    void setStyle(FrameStyle style) override;
    void setHalign(HAlign align) override;
    void setValign(VAlign align) override;
    void setWrap(bool value) override;
    void setFlags(int flags) override;
    void setImagePath(const std::string& path) override;

protected:
    void build() override;
    void applyLabel() override;

private:
    void applyAll();
    void showImage();
};

} // namespace tvw::gui::component::qt
