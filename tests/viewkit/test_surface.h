// A surface with scroll models of its own.
#pragma once

#include <viewkit/central_part.h>
#include <viewkit/invalid_region.h>
#include <viewkit/scroll_model.h>

#include <vector>

namespace viewkit {

// An axis of `extent` units from 0.
class TestModel : public IScrollModel {
public:
    double GetFrom() const override { return from; }
    double GetTo() const override { return to; }
    void SetStart(double s) override { start = s; }
    double GetStart() const override { return start; }
    int GetMinScrollDistance() const override { return 4; }
    bool IsFixedStepSize() const override { return true; }
    double GetStepSize(double) const override { return 1.0; }
    void SetStepSize(double, double) const override {}
    void SetMeasure(std::pair<double, int> m) override { measure = m; }
    std::pair<double, int> GetMeasure() const override { return measure; }

    double from = 0.0;
    double to = 1000.0;
    double start = 0.0;
    std::pair<double, int> measure{1.0, 1};
};

// Keeps what each paint had to draw.
class TestSurface : public CCentralPart {
public:
    explicit TestSurface(CVisualElement* parent)
        : CCentralPart(parent, {10, 10}, Alignment::Client) {
        SetHorzScroll(&horz);
        SetVertScroll(&vert);
    }

    void DrawContent(IPainter* painter) override {
        CCentralPart::DrawContent(painter);
        SetCoordSystem(painter);
        const CInvalidRegion region(GetDrawRect(painter), GetDrawValidRect(painter));
        parts.clear();
        for (int i = 0; i < region.GetCount(); ++i) parts.push_back(region[i]);
    }

    void ScrollTo(double x, double y) {
        horz.start = x;
        vert.start = y;
        OnChange(this, UpdateType::Content);
    }

    TestModel horz;
    TestModel vert;
    std::vector<rectangle<double>> parts;
};

}  // namespace viewkit
