#include <apps/viewer/find_panel.h>
#include <apps/viewer/main_window.h>
#include <apps/viewer/status_line.h>
#include <apps/viewer/view_edits.h>
#include <apps/viewer/wording.h>

#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

// What the actions do.

namespace nodeline::app {

namespace {

constexpr double kZoomStep = 1.25;

}  // namespace

void MainWindow::connect_actions() {
    const auto when = [this](Command command, auto work) {
        connect(actions_[command], &QAction::triggered, this, work);
    };
    when(Command::kOpen, [this] { open(); });
    when(Command::kReload, [this] { document_->reload(); });
    when(Command::kExportAll, [this] { export_picture(false); });
    when(Command::kExportVisible, [this] { export_picture(true); });
    when(Command::kCopyPicture, [this] { copy_picture(); });
    when(Command::kQuit, [this] { close(); });
    when(Command::kUndo, [this] { history_->stack()->undo(); });
    when(Command::kRedo, [this] { history_->stack()->redo(); });
    when(Command::kFind, [this] { find(); });
    when(Command::kCopyCaption, [this] { copy_captions(); });
    when(Command::kClearSelection, [this] { clear_selection(); });
    when(Command::kFoldParents, [this] { fold(FoldParents); });
    when(Command::kUnfoldParents, [this] { unfold(FoldParents); });
    when(Command::kFoldChildren, [this] { fold(FoldChildren); });
    when(Command::kUnfoldChildren, [this] { unfold(FoldChildren); });
    when(Command::kHide, [this] { hide_nodes(); });
    when(Command::kShowOnly, [this] { show_only(); });
    when(Command::kShowAll, [this] { show_all(); });
    when(Command::kMark, [this] { mark_nodes(); });
    when(Command::kCentre, [this] { centre(); });
    when(Command::kFit, [this] { graph_->fitToWindow(); });
    when(Command::kActualSize, [this] { graph_->zoomTo(1.0); });
    when(Command::kZoomIn, [this] { zoom_by(kZoomStep); });
    when(Command::kZoomOut, [this] { zoom_by(1.0 / kZoomStep); });
    for (const Command command :
         {Command::kPan, Command::kZoomArea, Command::kSelectArea, Command::kMoveNodes}) {
        when(command, [this] { set_mode(); });
    }
    when(Command::kOverview, [this](bool on) { overview_dock_->setVisible(on); });
    connect(overview_dock_, &QDockWidget::visibilityChanged, this,
            [this] { actions_[Command::kOverview]->setChecked(!overview_dock_->isHidden()); });
    when(Command::kGlide, [this] { set_glide(); });
    when(Command::kSystemColors, [this] { set_appearance(Appearance::kSystem); });
    when(Command::kLightColors, [this] { set_appearance(Appearance::kLight); });
    when(Command::kDarkColors, [this] { set_appearance(Appearance::kDark); });
    when(Command::kHelp, [this] { show_help(); });
    when(Command::kAbout, [this] { show_about(); });

    actions_[Command::kPan]->setChecked(true);
    const auto follow = [this](Command command, const QString& text, auto can, auto changed) {
        QUndoStack* const stack = history_->stack();
        connect(stack, can, actions_[command], &QAction::setEnabled);
        connect(stack, changed, this, [this, command, text](const QString& what) {
            actions_[command]->setText(what.isEmpty() ? text
                                                      : text + u' ' + WithoutMnemonics(what));
        });
        actions_[command]->setEnabled(false);
    };
    follow(Command::kUndo, tr("&Undo"), &QUndoStack::canUndoChanged, &QUndoStack::undoTextChanged);
    follow(Command::kRedo, tr("&Redo"), &QUndoStack::canRedoChanged, &QUndoStack::redoTextChanged);
}

// ---------------------------------------------------------------------------------------------
// Files and pictures

void MainWindow::open() {
    const QString folder = QFileInfo(document_->path()).absolutePath();
    const QString path = QFileDialog::getOpenFileName(this, tr("Open a graph"), folder);
    if (!path.isEmpty()) openFile(path);
}

void MainWindow::export_picture(bool is_visible_part_only) {
    const QFileInfo source(document_->path());
    const QString folder =
        document_->path().startsWith(u':') ? QString() : source.absolutePath() + u'/';
    QFileDialog dialog(this, tr("Export"), folder);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(
        {tr("SVG picture (*.svg)"), tr("PDF document (*.pdf)"), tr("PNG picture (*.png)")});
    dialog.selectFile(folder + source.completeBaseName() + QStringLiteral(".svg"));
    dialog.setDefaultSuffix(QStringLiteral("svg"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.section(u'.', 1).left(3));
    });
    if (dialog.exec() != QDialog::Accepted) return;
    const QString path = dialog.selectedFiles().front();
    QString error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool is_written = graph_->exportPicture(path, is_visible_part_only, &error);
    QApplication::restoreOverrideCursor();
    if (!is_written) return tell(error);
    mention(tr("Exported %1").arg(path));
}

void MainWindow::copy_picture() {
    const QImage picture = graph_->picture(true);
    if (picture.isNull()) return tell(tr("the picture is too large to be copied"));
    QApplication::clipboard()->setImage(picture);
    mention(tr("Copied what is in view"));
}

// ---------------------------------------------------------------------------------------------
// Nodes

std::vector<Node> MainWindow::targets() const {
    if (menu_node_) return {menu_node_};
    return SelectedInSight(*graph_);
}

void MainWindow::change(const std::function<void(const Node&)>& edit) {
    const std::vector<Node> nodes = targets();
    if (nodes.empty()) return;
    graph_->change(
        [&] {
            for (const Node& node : nodes) edit(node);
        },
        nodes.front());
}

void MainWindow::fold(FoldDirection side) {
    change([side](const Node& node) { Fold(node, side); });
}

void MainWindow::unfold(FoldDirection side) {
    change([side](const Node& node) { Unfold(node, side); });
}

// Nothing is kept at its pixel: a hidden node goes where its owner goes, and the view would follow.
void MainWindow::hide_nodes() {
    const std::vector<Node> nodes = targets();
    if (nodes.empty()) return;
    graph_->change([&nodes] {
        for (const Node& node : nodes) HideNode(node);
    });
}

void MainWindow::show_only() {
    const std::vector<Node> nodes = targets();
    if (nodes.size() == 1) change(ShowOnly);
}

void MainWindow::show_all() {
    const std::vector<Node> nodes = targets();
    const Node kept = nodes.empty() ? Node() : nodes.front();
    graph_->change([this] { ShowAll(graph_->viewer()->GetGraph()); }, kept);
}

void MainWindow::mark_nodes() {
    change([](const Node& node) { SetFlag(node, NodeMarked, !IsFlagSet(node, NodeMarked)); });
}

void MainWindow::centre() {
    const std::vector<Node> nodes = targets();
    if (nodes.size() == 1) graph_->reveal(nodes.front());
}

void MainWindow::copy_captions() {
    QStringList captions;
    for (const Node& node : targets()) captions.append(QString::fromStdString(node.GetCaption()));
    if (!captions.isEmpty()) QApplication::clipboard()->setText(captions.join(u'\n'));
}

void MainWindow::clear_selection() {
    const std::vector<Node> nodes = graph_->selectedNodes();
    if (nodes.empty()) return;
    for (const Node& node : nodes) Unselect(node);
    graph_->noteSelection();
}

void MainWindow::find() {
    find_dock_->show();
    find_dock_->raise();
    find_panel_->activate();
}

// ---------------------------------------------------------------------------------------------
// The view

void MainWindow::zoom_by(double factor) { graph_->zoomTo(graph_->viewer()->GetScale() * factor); }

void MainWindow::set_mode() {
    CGraphViewer* const viewer = graph_->viewer();
    const bool is_panning = actions_[Command::kPan]->isChecked();
    viewer->GetDragTracker()->Enable(is_panning);
    viewer->GetZoomRect()->Enable(!is_panning);
    viewer->SetRubberMode(actions_[Command::kSelectArea]->isChecked() ? RubberSelect : RubberZoom);
    viewer->SetMoveNodes(actions_[Command::kMoveNodes]->isChecked());
    graph_->setCursor(is_panning ? Qt::ArrowCursor : Qt::CrossCursor);
}

void MainWindow::show_help() {
    QMessageBox box(this);
    box.setWindowTitle(tr("How to use"));
    box.setTextFormat(Qt::RichText);
    box.setText(
        tr("<h3>With the pointer</h3><table cellpadding=3>"
           "<tr><td>Click a port</td><td>fold or unfold the neighbours behind it</td></tr>"
           "<tr><td>Click a node</td><td>select it, or take the selection back</td></tr>"
           "<tr><td>Drag</td><td>pan, or what the tool says that is switched on</td></tr>"
           "<tr><td>Ctrl and wheel</td><td>zoom about the pointer</td></tr>"
           "<tr><td>Double click a box</td><td>move it to the middle</td></tr>"
           "<tr><td>Right click</td><td>what can be done with a node, or with the picture</td></tr>"
           "</table><h3>With keys</h3><p>Arrows move the picture. Every other key stands in the "
           "menus, "
           "beside what it does.</p>"));
    box.exec();
}

void MainWindow::show_about() {
    QMessageBox::about(this, tr("About"),
                       tr("<h3>nodeline %1</h3><p>Shows large directed compound graphs, and keeps "
                          "the picture while you explore them.</p>")
                           .arg(QApplication::applicationVersion()));
}

}  // namespace nodeline::app
