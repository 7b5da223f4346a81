#pragma once

#include <array>
#include <string_view>

/// The names under which shortcuts are assigned to the application's actions: in stored data, in
/// messages and on the command line. Elsewhere an identifier is a plain string; these are the ones
/// that are known.
namespace pictal::ShortcutActionID {

inline constexpr std::string_view region = "region";
inline constexpr std::string_view window = "window";
inline constexpr std::string_view fullDisplay = "fullDisplay";
inline constexpr std::string_view colorPicker = "colorPicker";
inline constexpr std::string_view scrolling = "scrolling";
inline constexpr std::string_view openMainWindow = "openMainWindow";
inline constexpr std::string_view openRecentCapture = "openRecentCapture";

/// In the order in which they are shown.
inline constexpr std::array all{region,    window,         fullDisplay,      colorPicker,
                                scrolling, openMainWindow, openRecentCapture};

}  // namespace pictal::ShortcutActionID
