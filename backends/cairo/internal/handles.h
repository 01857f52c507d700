// Owning pointers to what Cairo counts.
#pragma once

#include <cairo.h>

#include <memory>

namespace nodeline::cairo {

struct DestroyHandle {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroyHandle>;
using Context = std::unique_ptr<cairo_t, DestroyHandle>;

}  // namespace nodeline::cairo
