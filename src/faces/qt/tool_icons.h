// The icons of the tool bars.
#pragma once

#include <QIcon>
#include <string_view>

namespace fathomline {

// Side of an icon in logical pixels.
inline constexpr int kToolIconSize = 16;

// The icon of the button with that key, in the colour of texts; none for a key that has no icon.
QIcon ToolIcon(std::string_view key);

}  // namespace fathomline
