// Scroll model: what can be scrolled along one axis, as scroll bars and rubber rectangles see it.
#pragma once

#include <corvex/export.h>

#include <utility>

namespace viewkit {

// A range of logical coordinates with a start, the coordinate at the leading edge of the view.
// The view may stand anywhere; the range is what a scroll bar offers.
//
// A measure says that `first` logical units are `second` pixels.
class NODELINE_API IScrollModel {
public:
    virtual ~IScrollModel() = default;

    // The ends of the range.
    [[nodiscard]] virtual double GetFrom() const = 0;
    [[nodiscard]] virtual double GetTo() const = 0;
    // Moves the view; nobody is told.
    virtual void SetStart(double start) = 0;
    [[nodiscard]] virtual double GetStart() const = 0;
    // The step of an arrow of a scroll bar, in pixels.
    [[nodiscard]] virtual int GetMinScrollDistance() const = 0;
    // Whether all steps have one size.
    [[nodiscard]] virtual bool IsFixedStepSize() const = 0;
    // The size of the step at a coordinate, in logical units.
    [[nodiscard]] virtual double GetStepSize(double at) const = 0;
    virtual void SetStepSize(double at, double step) const = 0;
    // The scale of the axis; both numbers are above 0.
    virtual void SetMeasure(std::pair<double, int> measure) = 0;
    [[nodiscard]] virtual std::pair<double, int> GetMeasure() const = 0;
    // Whether the view stands on whole steps only.
    [[nodiscard]] virtual bool IsInseparableStep() const { return false; }
    // The range or the start may have changed.
    virtual void Update() {}
};

}  // namespace viewkit
