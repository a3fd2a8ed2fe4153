/// Qt's keys as the codes that Windows has for them, which profiles and the run's key table know.
#pragma once

class QKeyEvent;

namespace tvw::rgs::studio {

/// 0: none.
[[nodiscard]] int virtualKeyOf(const QKeyEvent& event);

} // namespace tvw::rgs::studio
