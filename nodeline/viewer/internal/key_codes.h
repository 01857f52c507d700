// Codes of the keys that move a view.
#pragma once

namespace nodeline::internal {

enum KeyCode { KeyLeft = 37, KeyUp = 38, KeyRight = 39, KeyDown = 40 };

}  // namespace nodeline::internal
