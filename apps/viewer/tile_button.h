// Tile button: a button of two lines, a title and what there is to say about it.
#pragma once

#include <QAbstractButton>

namespace nodeline::app {

// Painted in the colours of the palette. The title is the text of the button. A line that is too
// long loses its end, one that is a path its middle; the tooltip has all of both. The focus is
// shown to those who come by keyboard.
class TileButton : public QAbstractButton {
public:
    enum class Kind {
        kPlain,    // on a ground of its own, with the title in bold
        kPrimary,  // in the colour of what is selected, one line, as wide as that takes
        kPath      // the description is a path, and stands beside the title
    };

    TileButton(Kind kind, const QString& title, const QString& description,
               QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void draw_ground(QPainter& painter) const;
    void draw_primary(QPainter& painter) const;
    void draw_plain(QPainter& painter) const;
    void draw_path(QPainter& painter) const;
    [[nodiscard]] QFont title_font() const;
    [[nodiscard]] QRect inside() const;

    Kind kind_;
    QString description_;
    bool is_focus_shown_ = false;
};

}  // namespace nodeline::app
