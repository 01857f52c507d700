// Window base: the part of a window that does not depend on what is under it.
#pragma once

#include <corvex/export.h>
#include <viewkit/control.h>
#include <viewkit/window.h>

namespace viewkit {

// A window of a given size with a tree of elements. A backend derives from it, gives it a painter,
// and calls `PaintPending` when it is idle.
class NODELINE_API WindowBase : public IWindow {
public:
    // A window of this size, in pixels, that shows nothing yet.
    explicit WindowBase(const size<int>& extent);
    ~WindowBase() override;
    WindowBase(const WindowBase&) = delete;
    WindowBase& operator=(const WindowBase&) = delete;

    // The dispatcher of the window, for every single event.
    [[nodiscard]] CControl& GetControl() { return *control_; }
    // The parent for what the window is to show.
    [[nodiscard]] CVisualElement* GetRoot() { return control_->GetRoot(); }

    // Paints if anything has asked for it. True if there was a paint.
    bool PaintPending();
    // Gives the window, and with it the elements, another size in pixels.
    virtual void Resize(const size<int>& extent);

    [[nodiscard]] rectangle<int> GetRect() const override;
    void Repaint(const rectangle<int>& area) override;
    void RequestPaint(const rectangle<int>& area) override;
    void SetCursor(Cursor cursor) override;
    void RestoreCursor() override;
    // The cursor that is shown.
    [[nodiscard]] Cursor GetCursor() const { return cursor_; }
    void SetRepeatTimer(int milliseconds) override;
    // In milliseconds; 0 while it stands still.
    [[nodiscard]] int GetRepeatTimer() const { return timer_; }

    // For a `Watch`.
    [[nodiscard]] std::weak_ptr<const void> GetLife() const { return life_.Get(); }

protected:
    // A paint begins, and has come to its end.
    virtual void PaintBegins();
    virtual void Painted();
    // Takes the elements down. For the destructor of a class that their paints or timers reach.
    void Close();

private:
    void paint();

    size<int> extent_;
    Cursor cursor_ = Cursor::Arrow;
    Cursor former_cursor_ = Cursor::Arrow;
    int timer_ = 0;
    LifeMark life_;
    std::unique_ptr<CControl> control_;
};

}  // namespace viewkit
