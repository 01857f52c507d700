#include <nodeline/viewer/scroll_model.h>

namespace nodeline {

void CXPosConverter::ConvertStart(int* /*x*/, int* y, const paintcore::rectangle<int>& r) {
    *y = r.top;
}
void CXPosConverter::ConvertStart(double* /*x*/, double* y, double /*lx*/, double ly) { *y = ly; }
void CXPosConverter::ConvertCur(int* /*x*/, int* y, const paintcore::rectangle<int>& r) {
    *y = r.bottom;
}

void CYPosConverter::ConvertStart(int* x, int* /*y*/, const paintcore::rectangle<int>& r) {
    *x = r.left;
}
void CYPosConverter::ConvertStart(double* x, double* /*y*/, double lx, double /*ly*/) { *x = lx; }
void CYPosConverter::ConvertCur(int* x, int* /*y*/, const paintcore::rectangle<int>& r) {
    *x = r.right;
}

void CBothPosConverter::ConvertStart(int*, int*, const paintcore::rectangle<int>&) {}
void CBothPosConverter::ConvertStart(double*, double*, double, double) {}
void CBothPosConverter::ConvertCur(int*, int*, const paintcore::rectangle<int>&) {}

}  // namespace nodeline
