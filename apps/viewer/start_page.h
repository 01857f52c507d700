// Start page: what the desktop program shows while no graph is open.
//
//   auto* page = new StartPage(window);
//   page->setExamples(BuiltInExamples());
//   connect(page, &StartPage::openRequested, window, &Window::open);
#pragma once

#include <apps/viewer/examples.h>

#include <QStringList>
#include <QWidget>
#include <vector>

class QGridLayout;
class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace nodeline::app {

class TileButton;

// A column in the middle; examples stand side by side where there is room. What does not fit is
// scrolled. Files that are dropped go to whoever owns the page.
class StartPage : public QWidget {
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent = nullptr);

    // Each replaces what was there; an empty list takes its heading away.
    void setExamples(const std::vector<Example>& examples);
    // Full paths, the latest first. No more than `kMaxRecentFiles` are shown.
    void setRecentFiles(const QStringList& paths);

    static constexpr int kMaxRecentFiles = 5;

Q_SIGNALS:
    void openRequested();
    void fileChosen(const QString& path);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void make_top(QVBoxLayout* column);
    void make_hints(QVBoxLayout* column);
    void arrange_examples();
    void style_texts();
    void say_how_to_begin();

    QScrollArea* scroll_ = nullptr;
    QWidget* column_ = nullptr;
    QLabel* heading_ = nullptr;
    QLabel* sentence_ = nullptr;
    TileButton* open_ = nullptr;
    QLabel* examples_heading_ = nullptr;
    QLabel* recent_heading_ = nullptr;
    QGridLayout* examples_layout_ = nullptr;
    QVBoxLayout* recent_layout_ = nullptr;
    std::vector<TileButton*> examples_;
    std::vector<TileButton*> recent_;
    std::vector<QLabel*> dimmed_;
    int example_columns_ = 0;
};

}  // namespace nodeline::app
