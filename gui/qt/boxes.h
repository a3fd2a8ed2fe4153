/// Boxes that ask the user something and wait for the answer.
#pragma once

#include <cstdint>
#include <string>

class QWidget;

namespace tvw::gui {

/// Shows a modal message with the buttons and the icon of the flags (gui/box.h); without a button
/// it has Ok. Answers the flag of the button; Escape is Cancel, else No, else the only button. In
/// silent mode nothing is shown unless force is set, and the answer is box::silentAnswer(flags).
std::uint32_t messageBox(QWidget* parent, const std::string& text, const std::string& title,
                         std::uint32_t flags, bool force);

/// Asks for one line of text. False, and out stays as it was, if the user cancels.
bool inputBox(QWidget* parent, const std::string& title, const std::string& prompt,
              const std::string& defaultText, std::string& out);

void setSilentMode(bool value);
[[nodiscard]] bool isSilentMode();
/// The icon of the boxes' windows; "" is the application's own.
void setBoxIcon(const std::string& path);

} // namespace tvw::gui
