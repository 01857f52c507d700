#include <nodeline/layout/inc_layout.h>

#include <nodeline/layout/internal/layout_engine.h>

namespace nodeline {

IncLayout::IncLayout() : engine_(std::make_unique<internal::LayoutEngine>()) {
    Init(30.0, 12.0, 2.0, 5.0);
}

IncLayout::~IncLayout() = default;

graph_ptr2<IncLayout> IncLayout::Create() { return {new IncLayout, true}; }

void IncLayout::Init(double level_spacing, double node_spacing, double dummy_spacing,
                     double backedge_spacing) {
    auto& settings = engine_->settings;
    settings.level_spacing = level_spacing;
    settings.node_spacing = node_spacing;
    settings.dummy_spacing = dummy_spacing;
    settings.backedge_spacing = backedge_spacing;
    settings.backward_force_pass = true;
    settings.include_hidden = true;
    engine_->AppendSteps();
}

void IncLayout::Make(Node owner) {
    if (owner) engine_->Make(owner, *this);
}

void IncLayout::Update(Node owner) {
    if (owner) engine_->Update(owner, *this);
}

void IncLayout::Resize(Node owner) {
    if (owner) engine_->Resize(owner);
}

graph_ptr2<ILayout> GetDefaultLayout() {
    static graph_ptr2<ILayout> layout;
    if (!layout) layout = checked_upcast<ILayout>(IncLayout::Create());
    return layout;
}

void _make_layout(Node n) {
    if (const graph_ptr2<ILayout> layout = n.GetLayout()) layout->Make(n);
}

void _update_layout(Node n) {
    if (const graph_ptr2<ILayout> layout = n.GetLayout()) layout->Update(n);
}

}  // namespace nodeline
