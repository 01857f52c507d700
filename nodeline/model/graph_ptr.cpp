#include <nodeline/model/graph_ptr.h>

namespace nodeline {

Countable::~Countable() = default;
Counter::~Counter() = default;

}  // namespace nodeline
