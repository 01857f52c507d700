// Main window of the desktop program: a graph, and around it what one needs to explore it.
#pragma once

#include <apps/viewer/actions.h>
#include <apps/viewer/document.h>
#include <apps/viewer/history.h>
#include <apps/viewer/theme.h>
#include <backends/qt/overview_widget.h>

#include <QMainWindow>
#include <functional>
#include <optional>
#include <vector>

class QDockWidget;
class QMenu;
class QStackedWidget;

namespace nodeline::app {

class AspectBox;
class FindPanel;
class MessageBar;
class ProgressLine;
class StartPage;
class StatusLine;

struct WindowOptions {
    LayoutKind layout = LayoutKind::kStable;
    // What the settings say, unless it is given.
    std::optional<Appearance> appearance;
};

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(const WindowOptions& options);
    ~MainWindow() override;

    void openFile(const QString& path);

    [[nodiscard]] qt::GraphWidget* graphWidget() const { return graph_; }
    [[nodiscard]] const Actions& actionSet() const { return actions_; }

Q_SIGNALS:
    // What the window tells a person, for whoever follows it by other means: the text of the status
    // line, and messages.
    void told(const QString& line);
    // Another graph has been painted for the first time.
    void pictureShown();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // main_window.cpp: what the window is made of
    void make_middle();
    void make_docks();
    void make_status_bar();
    void connect_document();
    void restore_settings(const WindowOptions& options);
    void save_settings();
    void set_appearance(Appearance appearance);
    void set_glide();
    void restyle();
    void show_opened();
    // With the panels, as they were left last.
    void show_graph_page();
    void note_recent(const QString& path);
    void show_title();
    // A message that stays until it is closed, and one that goes by itself.
    void tell(const QString& message);
    void mention(const QString& message);
    void tell_status();
    // The overview has the proportions of the graph.
    void follow_extent();

    // main_window_menus.cpp
    void make_menus();
    void make_toolbar();
    void fill_recent_menu();
    void show_node_menu(const Node& node, const QPoint& at);
    void enable_actions();
    void enable_node_actions();

    // main_window_commands.cpp: what the actions do
    void connect_actions();
    void open();
    void export_picture(bool is_visible_part_only);
    void copy_picture();
    void find();
    void copy_captions();
    void clear_selection();
    void fold(FoldDirection side);
    void unfold(FoldDirection side);
    void hide_nodes();
    void show_only();
    void show_all();
    void mark_nodes();
    void centre();
    void zoom_by(double factor);
    void set_mode();
    void show_help();
    void show_about();
    // The nodes that a command is for: the one with the open menu, or the selected ones.
    [[nodiscard]] std::vector<Node> targets() const;
    void change(const std::function<void(const Node&)>& edit);

    Actions actions_{this};
    MessageBar* messages_ = nullptr;
    QStackedWidget* pages_ = nullptr;
    StartPage* start_page_ = nullptr;
    qt::GraphWidget* graph_ = nullptr;
    qt::OverviewWidget* overview_ = nullptr;
    AspectBox* overview_box_ = nullptr;
    QDockWidget* overview_dock_ = nullptr;
    FindPanel* find_panel_ = nullptr;
    QDockWidget* find_dock_ = nullptr;
    ProgressLine* progress_ = nullptr;
    StatusLine* status_ = nullptr;
    Document* document_ = nullptr;
    History* history_ = nullptr;
    QMenu* node_menu_ = nullptr;
    QMenu* view_menu_ = nullptr;
    QMenu* recent_menu_ = nullptr;
    QStringList recent_;
    Node menu_node_;
    bool is_dark_ = false;
};

}  // namespace nodeline::app
