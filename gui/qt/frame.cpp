#include "gui/qt/frame.h"

#include <QFrame>

namespace tvw::gui {

void applyFrame(QFrame& frame, FrameStyle style)
{
    struct Look
    {
        QFrame::Shape shape;
        QFrame::Shadow shadow;
        int line, middle; ///< widths [pixels]
    };
    constexpr Look kLooks[] = {
        {QFrame::NoFrame, QFrame::Plain, 0, 0}, // by FrameStyle
        {QFrame::Panel, QFrame::Raised, 2, 1},
        {QFrame::Box, QFrame::Plain, 1, 0},
        {QFrame::Panel, QFrame::Sunken, 2, 1},
    };
    const Look& look = kLooks[static_cast<int>(style)];
    frame.setFrameStyle(static_cast<int>(look.shape) | static_cast<int>(look.shadow));
    frame.setLineWidth(look.line);
    frame.setMidLineWidth(look.middle);
}

} // namespace tvw::gui
