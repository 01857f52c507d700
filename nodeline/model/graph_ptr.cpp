#include <nodeline/model/graph_ptr.h>

namespace nodeline {

Countable::~Countable() = default;
Counter::~Counter() = default;

void Countable::delete_this() const noexcept { delete this; }

}  // namespace nodeline
