/// Numbers of the messages that components originate. The message's param is the component's id
/// where nothing else is told.
#pragma once

#include <cstdint>

namespace tvw::gui::message {

inline constexpr std::uint32_t first = 16384, end = 17280; ///< all of them lie in [first, end)

inline constexpr std::uint32_t showBegins = 16384;
inline constexpr std::uint32_t showEnded = 16385;
inline constexpr std::uint32_t hideBegins = 16386;
inline constexpr std::uint32_t hideEnded = 16387;
inline constexpr std::uint32_t resized = 16388;
inline constexpr std::uint32_t moved = 16389;
inline constexpr std::uint32_t destroyed = 16390;
inline constexpr std::uint32_t popupChosen = 16391; ///< param: the item's id
inline constexpr std::uint32_t focusGained = 16392;
inline constexpr std::uint32_t focusLost = 16393;
inline constexpr std::uint32_t mouseEntered = 16394;
inline constexpr std::uint32_t mouseLeft = 16395;
inline constexpr std::uint32_t undoKey = 16396; ///< Ctrl+Z was released in a dialog
inline constexpr std::uint32_t redoKey = 16397; ///< Ctrl+Y was released in a dialog
/// param: the key; value: pointer to a KeyStroke. A listener that adds an attachment swallows it.
inline constexpr std::uint32_t keyPressed = 16398;
inline constexpr std::uint32_t keyReleased = 16399;

inline constexpr std::uint32_t windowActive = 16640;
inline constexpr std::uint32_t windowInactive = 16641;
inline constexpr std::uint32_t modalShown = 16642; ///< by exec or showModal

inline constexpr std::uint32_t buttonPressed = 16704;
inline constexpr std::uint32_t buttonReleased = 16705;
inline constexpr std::uint32_t buttonClicked = 16706; ///< param: the checked state of a toggle

inline constexpr std::uint32_t textEdited = 16768; ///< editing finished

inline constexpr std::uint32_t selectionChanged = 16832; ///< of a list box or combo box
inline constexpr std::uint32_t itemActivated = 16833;
inline constexpr std::uint32_t comboTextChanged = 16834;

inline constexpr std::uint32_t spinnerChanged = 16896;
inline constexpr std::uint32_t spinnerEdited = 16897; ///< editing finished

inline constexpr std::uint32_t checkChanged = 16960;

inline constexpr std::uint32_t treeFlagClicked = 17024;
inline constexpr std::uint32_t treeSelectionChanged = 17025;
inline constexpr std::uint32_t treeHeaderClicked = 17026; ///< param: the flag's number, from 0
inline constexpr std::uint32_t treeDoubleClicked = 17027;

inline constexpr std::uint32_t menuChosen = 17152;      ///< param: the item's id
inline constexpr std::uint32_t menuAboutToShow = 17153; ///< param: the menu's id

} // namespace tvw::gui::message
