#include <apps/viewer/main_window.h>
#include <apps/viewer/view_edits.h>
#include <apps/viewer/wording.h>

#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <algorithm>

// Menus and tools, and when they can be used.

namespace nodeline::app {

namespace {

const Command kNodeCommands[] = {
    Command::kFoldParents,    Command::kUnfoldParents, Command::kFoldChildren,
    Command::kUnfoldChildren, Command::kHide,          Command::kShowOnly,
    Command::kMark,           Command::kCentre,        Command::kCopyCaption};

const Command kGraphCommands[] = {
    Command::kReload,      Command::kExportAll,  Command::kExportVisible,
    Command::kCopyPicture, Command::kFind,       Command::kShowAll,
    Command::kFit,         Command::kActualSize, Command::kZoomIn,
    Command::kZoomOut,     Command::kPan,        Command::kZoomArea,
    Command::kSelectArea,  Command::kMoveNodes,  Command::kClearSelection,
    Command::kOverview};

}  // namespace

void MainWindow::make_menus() {
    const auto fill = [this](QMenu* menu, std::initializer_list<std::optional<Command>> commands) {
        for (const auto& command : commands) {
            if (command) {
                menu->addAction(actions_[*command]);
            } else {
                menu->addSeparator();
            }
        }
        menu->setToolTipsVisible(true);
    };
    const std::nullopt_t line = std::nullopt;

    QMenu* const file = menuBar()->addMenu(tr("&File"));
    fill(file, {Command::kOpen});
    recent_menu_ = file->addMenu(tr("Open Re&cent"));
    connect(file, &QMenu::aboutToShow, this, &MainWindow::fill_recent_menu);
    fill(file, {Command::kReload, line, Command::kExportAll, Command::kExportVisible, line,
                Command::kQuit});
    fill(menuBar()->addMenu(tr("&Edit")),
         {Command::kUndo, Command::kRedo, line, Command::kCopyCaption, Command::kCopyPicture, line,
          Command::kClearSelection, Command::kFind});
    node_menu_ = menuBar()->addMenu(tr("&Node"));
    fill(node_menu_,
         {Command::kFoldParents, Command::kUnfoldParents, Command::kFoldChildren,
          Command::kUnfoldChildren, line, Command::kHide, Command::kShowOnly, Command::kShowAll,
          line, Command::kMark, Command::kCentre, Command::kCopyCaption});
    view_menu_ = menuBar()->addMenu(tr("&View"));
    fill(view_menu_, {Command::kFit, Command::kActualSize, Command::kZoomIn, Command::kZoomOut,
                      line, Command::kPan, Command::kZoomArea, Command::kSelectArea, line,
                      Command::kMoveNodes, Command::kGlide, line, Command::kOverview});
    fill(view_menu_->addMenu(tr("&Colours")),
         {Command::kSystemColors, Command::kLightColors, Command::kDarkColors});
    fill(menuBar()->addMenu(tr("&Help")), {Command::kHelp, Command::kAbout});
    connect(node_menu_, &QMenu::aboutToShow, this, &MainWindow::enable_node_actions);
}

void MainWindow::make_toolbar() {
    QToolBar* const tools = addToolBar(tr("Tools"));
    tools->setObjectName(QStringLiteral("tools"));
    tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
    tools->setMovable(false);
    const auto add = [this, tools](Command command, const QString& text) {
        actions_[command]->setIconText(text);
        tools->addAction(actions_[command]);
    };
    add(Command::kOpen, tr("Open"));
    tools->addSeparator();
    add(Command::kUndo, tr("Undo"));
    add(Command::kRedo, tr("Redo"));
    tools->addSeparator();
    add(Command::kFit, tr("Fit"));
    add(Command::kActualSize, tr("100 %"));
    add(Command::kZoomOut, tr("−"));
    add(Command::kZoomIn, tr("+"));
    tools->addSeparator();
    add(Command::kPan, tr("Pan"));
    add(Command::kZoomArea, tr("Zoom"));
    add(Command::kSelectArea, tr("Select"));
    add(Command::kMoveNodes, tr("Move Nodes"));
    tools->addSeparator();
    add(Command::kShowAll, tr("Show All"));
    add(Command::kFind, tr("Find"));
}

void MainWindow::fill_recent_menu() {
    recent_menu_->clear();
    recent_menu_->setEnabled(!recent_.isEmpty());
    recent_menu_->setToolTipsVisible(true);
    for (const QString& path : recent_) {
        const QString name = WithoutMnemonics(QFileInfo(path).fileName());
        QAction* const action = recent_menu_->addAction(name);
        action->setToolTip(path);
        action->setStatusTip(path);
        connect(action, &QAction::triggered, this, [this, path] { openFile(path); });
    }
}

void MainWindow::show_node_menu(const Node& node, const QPoint& at) {
    QMenu menu(this);
    menu.setToolTipsVisible(true);
    if (node) {
        menu_node_ = node;
        enable_node_actions();
        menu.addActions(node_menu_->actions());
    } else {
        for (const Command command : {Command::kFit, Command::kShowAll, Command::kExportAll,
                                      Command::kExportVisible, Command::kCopyPicture}) {
            menu.addAction(actions_[command]);
        }
    }
    menu.exec(at);
    menu_node_ = {};
    enable_node_actions();
}

void MainWindow::enable_actions() {
    const bool has_graph = !document_->path().isEmpty();
    for (const Command command : kGraphCommands) actions_[command]->setEnabled(has_graph);
    enable_node_actions();
}

void MainWindow::enable_node_actions() {
    const std::vector<Node> nodes = targets();
    for (const Command command : kNodeCommands) actions_[command]->setEnabled(!nodes.empty());
    const auto enable = [&](Command command, bool (*can)(const Node&, FoldDirection),
                            FoldDirection side) {
        actions_[command]->setEnabled(std::any_of(
            nodes.begin(), nodes.end(), [&](const Node& node) { return can(node, side); }));
    };
    enable(Command::kFoldParents, CanFold, FoldParents);
    enable(Command::kUnfoldParents, CanUnfold, FoldParents);
    enable(Command::kFoldChildren, CanFold, FoldChildren);
    enable(Command::kUnfoldChildren, CanUnfold, FoldChildren);
    actions_[Command::kShowOnly]->setEnabled(nodes.size() == 1);
    actions_[Command::kCentre]->setEnabled(nodes.size() == 1);
}

}  // namespace nodeline::app
