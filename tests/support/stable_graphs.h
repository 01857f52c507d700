// Small graphs for the stable layout.
#pragma once

#include <nodeline/layout/stable_layout.h>
#include <support/layout_graphs.h>

namespace nodeline::test {

// A graph of `layout_graphs.h`, with the stable layout.
template <class G>
struct Stable : G {
    explicit Stable(const StableLayout::Options& options = {}) {
        this->layout = StableLayout::Create(options);
        this->graph->SetDefaultLayout(this->layout);
    }
};

}  // namespace nodeline::test
