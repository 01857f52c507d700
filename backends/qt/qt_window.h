// A window on a widget of Qt: the elements of `viewkit` where a widget stands.
//
//   QtWindow window;
//   auto* viewer = new CGraphViewer(window.GetRoot(), graph, true);
//   window.resize(800, 600);
//   window.show();
#pragma once

#include <corvex/export.h>
#include <viewkit/window_base.h>

#include <QBasicTimer>
#include <QWidget>
#include <memory>
#include <vector>

namespace nodeline::qt {

class WindowImage;

// A widget that shows a tree of elements. They live in logical pixels of the widget; their picture
// has as many device pixels as the screen asks for, and is kept from paint to paint. It is brought
// up to date when the event loop comes to rest, while the widget is visible.
//
// The widget may be destroyed from within any event of its elements, and is then left at once.
class NODELINE_API QtWindow : public QWidget, public viewkit::WindowBase {
    Q_OBJECT

public:
    // A widget without elements; `parent` may be null.
    explicit QtWindow(QWidget* parent = nullptr);
    ~QtWindow() override;

    // Without overlays, in device pixels.
    [[nodiscard]] QImage GetImage() const;
    // How many paints of the elements there have been.
    [[nodiscard]] int GetPaintCount() const { return paint_count_; }

    // Sizes the widget, and with it the elements.
    void Resize(const paintcore::size<int>& extent) override;
    [[nodiscard]] paintcore::IPainter* GetPainter() override;
    void RequestPaint(const paintcore::rectangle<int>& area) override;
    // False also where the distance is no whole number of device pixels.
    bool MovePixels(const paintcore::rectangle<int>& area, int dx, int dy) override;
    void SetCursor(viewkit::Cursor cursor) override;
    void RestoreCursor() override;
    void SetRepeatTimer(int milliseconds) override;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void Painted() override;

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    // These come only to a widget that accepts drops (`setAcceptDrops`), which is off at first: an
    // element says yes or no to a place, and hears that something was dropped there.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    // Calls `use` and, if the widget is still there, lets Qt offer the event to others where
    // nobody has used it up.
    template <class Use>
    void hand_on(QEvent* event, Use use);
    void paint_at_idle();
    void make_image();
    // Makes the elements as large as the widget is.
    void take_extent();
    void follow_pixel_ratio();
    void lose_capture();
    void show_tooltip(const QPoint& at, const QPoint& global);

    std::unique_ptr<WindowImage> image_;
    // Former images, on one of which the paint under way may be drawing.
    std::vector<std::unique_ptr<WindowImage>> retired_;
    viewkit::Watch<viewkit::CVisualElement> last_focused_;
    QBasicTimer repeat_timer_;
    bool paint_is_due_ = false;
    bool right_is_down_ = false;
    int paint_count_ = 0;
};

}  // namespace nodeline::qt
