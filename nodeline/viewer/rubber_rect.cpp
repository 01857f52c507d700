#include <nodeline/viewer/internal/rubber_rect_members.h>

namespace viewkit {

template class CRubberRect<DummyDrawer>;
template class CRubberRectEx<FocusRectDrawer>;

}  // namespace viewkit
