// Theme: the light and the dark look of the desktop program.
//
//   ApplyAppearance(Appearance::kDark);
//   ApplyLook(IsDark(QApplication::palette()), *nodes, *edges);
#pragma once

#include <nodeline/handlers/handlers.h>

class QPalette;

namespace nodeline::app {

enum class Appearance {
    kSystem,  // what the desktop says
    kLight,
    kDark
};

// Whether texts are lighter than what they stand on.
[[nodiscard]] bool IsDark(const QPalette& palette);

// Sets the style and the palette of the application. The first call keeps those it finds, and
// `kSystem` goes back to them. Needs a `QApplication`.
void ApplyAppearance(Appearance appearance);

// Sets colours, fonts and outlines of nodes, ports and edges, and the background of the process's
// palette. What else `ViewerNodeHandler` and `ViewerEdgeHandler` show is set where they are such.
// Sizes of nodes depend on the font and not on `dark`; viewers have to be repainted.
void ApplyLook(bool dark, PortNodeHandler& nodes, DummyEdgeHandler& edges);

}  // namespace nodeline::app
