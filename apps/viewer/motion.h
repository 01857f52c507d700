// Motion: whether the desktop asks programs to move less.
#pragma once

namespace nodeline::app {

// Asks the widget style, the settings of the two common desktops, and the settings portal of the
// session, where there is one; false where nobody knows.
[[nodiscard]] bool DesktopReducesMotion();

}  // namespace nodeline::app
