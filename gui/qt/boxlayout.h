/// The layout of all containers: a box layout that keeps within limits of its own.
#pragma once

#include "gui/types.h"

#include <QBoxLayout>

namespace tvw::gui {

class QBoxLayoutLimited : public QBoxLayout
{
public:
    explicit QBoxLayoutLimited(Direction direction, QWidget* host = nullptr);

    void setLimits(Size minimum, Size maximum);

    QSize minimumSize() const override;
    QSize maximumSize() const override;
    QSize sizeHint() const override;

private:
    [[nodiscard]] QSize limited(QSize size) const;

    Size minimum_;
    Size maximum_ = kUnlimited;
};

} // namespace tvw::gui
