// Listens to every signal of a handler and writes down what it hears, one line per call: the name
// of the signal, the caption of the node or edge, and the other arguments.
#pragma once

#include <nodeline/handlers/handlers.h>
#include <paintcore/number_text.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace nodeline::test {

using Log = std::vector<std::string>;

// One receiver per signal, so that a line tells which one was raised.
template <class Item>
class Ear : public subscriber_base_t {
public:
    Ear(Log& log, std::string signal) : log_(&log), signal_(std::move(signal)) {}

    void Hear(Item& item) { Write(item, ""); }
    void Hear(Item& item, double x, double y) { Write(item, Numbers({x, y})); }
    void Hear(Item& item, double x, double y, int keys, MouseButton button) {
        Write(item, Numbers({x, y, double(keys), double(static_cast<int>(button))}));
    }
    void Hear(Item& item, rectangle<double> r) {
        Write(item, Numbers({r.left, r.top, r.right, r.bottom}));
    }
    void Hear(Item& item, CGraphTooltipEvent* event) {
        Write(item, event != nullptr ? " \"" + event->text + "\"" : " null");
    }

private:
    static std::string Numbers(const std::vector<double>& values) {
        std::string text;
        for (const double value : values) text += " " + paintcore::NumberText(value);
        return text;
    }
    void Write(Item& item, const std::string& arguments) {
        log_->push_back(signal_ + " " + item.GetCaption() + arguments);
    }

    Log* log_;
    std::string signal_;
};

template <class Item>
class EventLog {
public:
    template <class Handler>
    explicit EventLog(Handler& handler) {
        Listen(handler.OnButtonDown, "OnButtonDown");
        Listen(handler.OnButtonUp, "OnButtonUp");
        Listen(handler.OnMouseMove, "OnMouseMove");
        Listen(handler.OnClick, "OnClick");
        Listen(handler.OnDoubleClick, "OnDoubleClick");
        Listen(handler.OnMouseHover, "OnMouseHover");
        Listen(handler.OnMouseLeave, "OnMouseLeave");
        Listen(handler.OnTooltip, "OnTooltip");
        Listen(handler.OnTooltipTrack, "OnTooltipTrack");
        if constexpr (requires { handler.OnSelectRect; }) {
            Listen(handler.OnSelectRect, "OnSelectRect");
            Listen(handler.OnContextMenu, "OnContextMenu");
        }
    }

    // The lines since the last call.
    Log Take() { return std::exchange(log_, {}); }

private:
    template <class Signal>
    void Listen(Signal& signal, const std::string& name) {
        ears_.push_back(std::make_unique<Ear<Item>>(log_, name));
        signal.connect(ears_.back().get(), &Ear<Item>::Hear);
    }

    Log log_;
    std::vector<std::unique_ptr<Ear<Item>>> ears_;
};

}  // namespace nodeline::test
