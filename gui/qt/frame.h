/// How the frame styles of the layouts are drawn.
#pragma once

#include "gui/types.h"

class QFrame;

namespace tvw::gui {

void applyFrame(QFrame& frame, FrameStyle style);

} // namespace tvw::gui
