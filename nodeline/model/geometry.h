// The geometry values of the model: those of the painter, under the library's own name.
#pragma once

#include <paintcore/geometry.h>

namespace nodeline {

using paintcore::point;
using paintcore::rectangle;
using paintcore::size;

}  // namespace nodeline
