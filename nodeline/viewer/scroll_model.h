// Scroll models of surfaces that scroll in both directions, and converters that confine a rubber
// rectangle to one axis.
#pragma once

#include <corvex/export.h>
#include <paintcore/geometry.h>
#include <viewkit/scroll_model.h>

#include <utility>

namespace nodeline {

using viewkit::IScrollModel;

// A model whose steps all have the size 1.
class NODELINE_API ISimpleScrollModel : public IScrollModel {
public:
    [[nodiscard]] bool IsFixedStepSize() const override { return true; }
    [[nodiscard]] double GetStepSize(double /*at*/) const override { return 1.0; }
    void SetStepSize(double /*at*/, double /*step*/) const override {}
};

// The horizontal axis of a surface, under names that do not meet those of the vertical one.
class NODELINE_API IHorzSimpleScrollModel : public ISimpleScrollModel {
public:
    [[nodiscard]] double GetFrom() const override { return GetHorzFrom(); }
    [[nodiscard]] double GetTo() const override { return GetHorzTo(); }
    void SetStart(double start) override { SetHorzStart(start); }
    [[nodiscard]] double GetStart() const override { return GetHorzStart(); }
    [[nodiscard]] int GetMinScrollDistance() const override { return GetHorzStepInPixels(); }
    void SetMeasure(std::pair<double, int> measure) override { SetHorzMeasure(measure); }
    [[nodiscard]] std::pair<double, int> GetMeasure() const override { return GetHorzMeasure(); }

    // The operations of `IScrollModel` for this axis.
    [[nodiscard]] virtual double GetHorzFrom() const = 0;
    [[nodiscard]] virtual double GetHorzTo() const = 0;
    virtual void SetHorzStart(double start) = 0;
    [[nodiscard]] virtual double GetHorzStart() const = 0;
    [[nodiscard]] virtual int GetHorzStepInPixels() const = 0;
    virtual void SetHorzMeasure(std::pair<double, int> measure) = 0;
    [[nodiscard]] virtual std::pair<double, int> GetHorzMeasure() const = 0;
};

// The vertical axis.
class NODELINE_API IVertSimpleScrollModel : public ISimpleScrollModel {
public:
    [[nodiscard]] double GetFrom() const override { return GetVertFrom(); }
    [[nodiscard]] double GetTo() const override { return GetVertTo(); }
    void SetStart(double start) override { SetVertStart(start); }
    [[nodiscard]] double GetStart() const override { return GetVertStart(); }
    [[nodiscard]] int GetMinScrollDistance() const override { return GetVertStepInPixels(); }
    [[nodiscard]] bool IsFixedStepSize() const override { return IsVertFixedStepSize(); }
    [[nodiscard]] double GetStepSize(double at) const override { return GetVertStepSize(at); }
    void SetMeasure(std::pair<double, int> measure) override { SetVertMeasure(measure); }
    [[nodiscard]] std::pair<double, int> GetMeasure() const override { return GetVertMeasure(); }

    // The operations of `IScrollModel` for this axis.
    [[nodiscard]] virtual double GetVertFrom() const = 0;
    [[nodiscard]] virtual double GetVertTo() const = 0;
    virtual void SetVertStart(double start) = 0;
    [[nodiscard]] virtual double GetVertStart() const = 0;
    [[nodiscard]] virtual int GetVertStepInPixels() const = 0;
    virtual void SetVertMeasure(std::pair<double, int> measure) = 0;
    [[nodiscard]] virtual std::pair<double, int> GetVertMeasure() const = 0;
    [[nodiscard]] virtual double GetVertStepSize(double /*at*/) const { return 1.0; }
    [[nodiscard]] virtual bool IsVertFixedStepSize() const { return true; }
};

// Restricts a rubber rectangle to one axis.
class NODELINE_API IPosConverter {
public:
    virtual ~IPosConverter() = default;

    // The start corner in pixels, within a surface whose content is `r`.
    virtual void ConvertStart(int* x, int* y, const paintcore::rectangle<int>& r) = 0;
    // The start corner in logical coordinates; (`lx`, `ly`) is where it would stand without.
    virtual void ConvertStart(double* x, double* y, double lx, double ly) = 0;
    // The corner at the pointer, in pixels.
    virtual void ConvertCur(int* x, int* y, const paintcore::rectangle<int>& r) = 0;
};

// A band over the whole height: only x counts.
class NODELINE_API CXPosConverter : public IPosConverter {
public:
    void ConvertStart(int* x, int* y, const paintcore::rectangle<int>& r) override;
    void ConvertStart(double* x, double* y, double lx, double ly) override;
    void ConvertCur(int* x, int* y, const paintcore::rectangle<int>& r) override;
};

// A band over the whole width: only y counts.
class NODELINE_API CYPosConverter : public IPosConverter {
public:
    void ConvertStart(int* x, int* y, const paintcore::rectangle<int>& r) override;
    void ConvertStart(double* x, double* y, double lx, double ly) override;
    void ConvertCur(int* x, int* y, const paintcore::rectangle<int>& r) override;
};

// No restriction.
class NODELINE_API CBothPosConverter : public IPosConverter {
public:
    void ConvertStart(int* x, int* y, const paintcore::rectangle<int>& r) override;
    void ConvertStart(double* x, double* y, double lx, double ly) override;
    void ConvertCur(int* x, int* y, const paintcore::rectangle<int>& r) override;
};

}  // namespace nodeline
