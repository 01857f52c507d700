#include <nodeline/layout/stable_layout.h>

#include <nodeline/layout/internal/stable_engine.h>

namespace nodeline {

StableLayout::StableLayout() : StableLayout(Options()) {}

StableLayout::StableLayout(const Options& options)
    : engine_(std::make_unique<internal::StableEngine>(options)) {}

StableLayout::~StableLayout() = default;

graph_ptr2<StableLayout> StableLayout::Create() { return {new StableLayout, true}; }

graph_ptr2<StableLayout> StableLayout::Create(const Options& options) {
    return {new StableLayout(options), true};
}

void StableLayout::Make(Node owner) {
    if (owner) engine_->Make(owner, *this);
}

void StableLayout::Update(Node owner) {
    if (owner) engine_->Update(owner, *this);
}

void StableLayout::Resize(Node owner) {
    if (owner) engine_->Resize(owner, *this);
}

}  // namespace nodeline
