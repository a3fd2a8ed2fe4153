#pragma once

#include "gui/componentinterface/label.h"
#include "gui/stdcomponent.h"

namespace tvw::gui::component {

struct LabelFields
{
    std::string imagePath;
    FrameStyle style = FrameStyle::None;
    HAlign halign = HAlign::None;
    VAlign valign = VAlign::None;
    bool wrap = false, selectable = false, hyperlinks = false;
};

/// The element's text, else its attribute, is the label.
class Label : public FieldComponent<componentinterface::Label, LabelFields>
{
public:
    static constexpr KindInfo kKind{kTag};

    explicit Label(const util::xml::Element& element);

    void writeXml(util::xml::Element& element) const override;
    FrameStyle style() const override { return fields_.style; }
    void setStyle(FrameStyle style) override { fields_.style = style; }
    HAlign halign() const override { return fields_.halign; }
    VAlign valign() const override { return fields_.valign; }
    void setHalign(HAlign align) override { fields_.halign = align; }
    void setValign(VAlign align) override { fields_.valign = align; }
    void setWrap(bool value) override { fields_.wrap = value; }
    bool wrap() const override { return fields_.wrap; }
    void setFlags(int flags) override;
    int flags() const override;
    std::string imagePath() const override { return fields_.imagePath; }
    void setImagePath(const std::string& path) override { fields_.imagePath = path; }
};

} // namespace tvw::gui::component
