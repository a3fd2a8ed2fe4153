#include "gui/qt/boxlayout.h"

#include <algorithm>

namespace tvw::gui {

QBoxLayoutLimited::QBoxLayoutLimited(Direction direction, QWidget* host)
    : QBoxLayout(direction, host)
{
    setSpacing(0);
    setContentsMargins(0, 0, 0, 0);
    setSizeConstraint(QLayout::SetMinAndMaxSize);
}

void QBoxLayoutLimited::setLimits(Size minimum, Size maximum)
{
    minimum_ = minimum;
    maximum_ = maximum;
    invalidate();
}

QSize QBoxLayoutLimited::limited(QSize size) const
{
    const auto clamp = [](int value, int low, int high) {
        return std::min(std::max(value, low), high);
    };
    return {clamp(size.width(), minimum_.width, maximum_.width),
            clamp(size.height(), minimum_.height, maximum_.height)};
}

QSize QBoxLayoutLimited::minimumSize() const
{
    return limited(QBoxLayout::minimumSize());
}

QSize QBoxLayoutLimited::maximumSize() const
{
    return limited(QBoxLayout::maximumSize());
}

QSize QBoxLayoutLimited::sizeHint() const
{
    return limited(QBoxLayout::sizeHint());
}

} // namespace tvw::gui
