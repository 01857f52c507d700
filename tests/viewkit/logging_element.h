// An element that writes down its events, and the window that it stands in.
#pragma once

#include <backends/headless/headless_window.h>
#include <viewkit/control.h>
#include <viewkit/element.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace viewkit {

using Log = std::vector<std::string>;

// Each event is a line "name event x y".
class LoggingElement : public CVisualElement {
public:
    LoggingElement(CVisualElement* parent, std::string name, Log* log, const rectangle<int>& where)
        : CVisualElement(parent, {0, 0}, Alignment::None), name_(std::move(name)), log_(log) {
        SetPos(where, true);
    }

    // What the handlers answer, and what they do before.
    bool answer = false;
    std::function<void(const std::string& event)> on_event;

    void MakeCaptureOnly() { SetCaptureOnly(); }

    bool HandleMouseMove(int x, int y, int, MouseButton) override { return Note("move", x, y); }
    bool HandleButtonDown(int x, int y, int, MouseButton) override { return Note("down", x, y); }
    bool HandleButtonUp(int x, int y, int, MouseButton) override { return Note("up", x, y); }
    bool HandleDoubleClick(int x, int y, int, MouseButton) override { return Note("double", x, y); }
    void HandleMouseHover(CVisualElement*) override { Note("hover"); }
    void HandleMouseLeave(CVisualElement*) override { Note("leave"); }
    bool HandleMouseWheel(int x, int y, int, double, bool) override { return Note("wheel", x, y); }
    bool HandleKeyDown(int, int code) override { return Note("key", code, 0); }
    bool HandleContextMenu(int x, int y) override { return Note("context", x, y); }
    bool HandleOnTooltip(CTooltipEvent* event) override {
        event->tipRect = {event->pos.x, event->pos.y, event->pos.x + 5, event->pos.y + 5};
        return Note("tooltip", event->pos.x, event->pos.y);
    }
    void HandleGetFocus() override { Note("focus"); }
    void HandleLostFocus() override { Note("unfocus"); }
    void HandleCaptureLost() override { Note("capture-lost"); }
    void HandleTimer() override { Note("timer"); }
    void DrawContent(IPainter* painter) override {
        CVisualElement::DrawContent(painter);
        Note(GetDrawValidRect(painter) == GetDrawRect(painter) ? "draw-valid" : "draw");
    }

    // A slot for signals of other elements.
    void Slot(CVisualElement*, int x, int y, int, MouseButton) { Note("slot", x, y); }

private:
    void Note(const std::string& event) {
        log_->push_back(name_ + " " + event);
        if (on_event) on_event(event);
    }
    bool Note(const std::string& event, int x, int y) {
        const bool result = answer;
        log_->push_back(name_ + " " + event + " " + std::to_string(x) + " " + std::to_string(y));
        if (on_event) on_event(event);
        return result;
    }

    std::string name_;
    Log* log_;
};

inline Log Take(Log& log) { return std::exchange(log, {}); }

}  // namespace viewkit
