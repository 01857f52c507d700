#include <apps/viewer/aspect_box.h>
#include <apps/viewer/find_panel.h>
#include <apps/viewer/main_window.h>
#include <apps/viewer/message_bar.h>
#include <apps/viewer/motion.h>
#include <apps/viewer/progress_line.h>
#include <apps/viewer/start_page.h>
#include <apps/viewer/status_line.h>

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QMimeData>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

// What the window is made of, and how its parts come together.

namespace nodeline::app {

namespace {

constexpr QSize kFirstSize{1200, 800};
constexpr QSize kOverviewSize{260, 180};
constexpr int kGlideTime = 150;  // in milliseconds
constexpr int kMostRecent = 10;
// Of messages that go by themselves, in milliseconds.
constexpr int kMessageTime = 5000;

}  // namespace

MainWindow::MainWindow(const WindowOptions& options) {
    setAcceptDrops(true);
    make_middle();
    make_docks();
    make_status_bar();
    document_ = new Document(graph_, this);
    document_->setLayout(options.layout);
    history_ = new History(graph_, this);
    make_menus();
    make_toolbar();
    connect_actions();
    connect_document();
    restore_settings(options);
    show_title();
    enable_actions();
}

// Parts that follow the graph widget go before it does. Others go when there is no window any more
// that could hear of it.
MainWindow::~MainWindow() {
    for (QObject* const part : findChildren<QObject*>()) part->disconnect(this);
    delete document_;
    delete history_;
    delete overview_;
}

void MainWindow::make_middle() {
    auto* const middle = new QWidget(this);
    messages_ = new MessageBar(middle);
    pages_ = new QStackedWidget(middle);
    start_page_ = new StartPage(pages_);
    graph_ = new qt::GraphWidget(pages_);
    pages_->addWidget(start_page_);
    pages_->addWidget(graph_);
    auto* const column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(messages_);
    column->addWidget(pages_, 1);
    setCentralWidget(middle);
    start_page_->setExamples(BuiltInExamples());
    connect(start_page_, &StartPage::openRequested, this, &MainWindow::open);
    connect(start_page_, &StartPage::fileChosen, this, &MainWindow::openFile);
    connect(graph_, &qt::GraphWidget::menuRequested, this, &MainWindow::show_node_menu);
    connect(graph_, &qt::GraphWidget::selectionChanged, this, &MainWindow::enable_node_actions);
    connect(graph_, &qt::GraphWidget::graphChanged, this, &MainWindow::enable_node_actions);
    connect(graph_, &qt::GraphWidget::nodeDoubleClicked, this, [this](const Node& node) {
        if (node.GetOwned().GetCount() > 0) graph_->reveal(node);
    });
}

void MainWindow::make_docks() {
    overview_dock_ = new QDockWidget(tr("Overview"), this);
    overview_dock_->setObjectName(QStringLiteral("overview"));
    overview_ = new qt::OverviewWidget(graph_);
    overview_box_ = new AspectBox(overview_, overview_dock_);
    overview_box_->setMinimumSize(kOverviewSize / 2);
    overview_dock_->setWidget(overview_box_);
    addDockWidget(Qt::RightDockWidgetArea, overview_dock_);
    find_dock_ = new QDockWidget(tr("Nodes"), this);
    find_dock_->setObjectName(QStringLiteral("nodes"));
    find_panel_ = new FindPanel(find_dock_);
    find_dock_->setWidget(find_panel_);
    addDockWidget(Qt::RightDockWidgetArea, find_dock_);
    // Beside the start page they would hold nothing.
    overview_dock_->hide();
    find_dock_->hide();
    connect(find_panel_, &FindPanel::nodeChosen, graph_, &qt::GraphWidget::reveal);
    connect(find_panel_, &FindPanel::closed, this, [this] {
        find_dock_->hide();
        graph_->setFocus();
    });
    connect(graph_, &qt::GraphWidget::graphChanged, find_panel_, &FindPanel::refresh);
    connect(graph_, &qt::GraphWidget::graphChanged, this, &MainWindow::follow_extent);
}

void MainWindow::make_status_bar() {
    status_ = new StatusLine(statusBar(), graph_);
    progress_ = new ProgressLine(this);
    statusBar()->insertWidget(0, progress_);
    connect(status_, &StatusLine::changed, this, &MainWindow::tell_status);
}

void MainWindow::connect_document() {
    connect(document_, &Document::loadingStarted, this, [this] {
        progress_->start([this] {
            return QFileInfo(document_->loadingPath()).fileName() + QStringLiteral(": ") +
                   document_->phase();
        });
    });
    connect(document_, &Document::loadingEnded, progress_, &ProgressLine::stop);
    connect(progress_, &ProgressLine::cancelled, document_, &Document::cancel);
    connect(document_, &Document::opened, this, &MainWindow::show_opened);
    connect(document_, &Document::failed, this, &MainWindow::tell);
    connect(document_, &Document::warned, this, &MainWindow::tell);
    connect(document_, &Document::reloaded, this, [this](const MergeResult& result) {
        history_->adopt();
        find_panel_->setGraph(graph_->viewer()->GetGraph());
        status_->renew();
        const QString what = result.IsEmpty()
                                 ? tr("nothing has changed")
                                 : tr("%L1 %2 came, %L3 went")
                                       .arg(result.added)
                                       .arg(result.added == 1 ? tr("node") : tr("nodes"))
                                       .arg(result.removed);
        messages_->hide();
        mention(tr("Read again: %1").arg(what));
    });
}

void MainWindow::follow_extent() {
    const nodeline::size<double> s = graph_->viewer()->GetGraph()->GetRoot().GetSize();
    overview_box_->setAspect(s.cx / s.cy);
}

// ---------------------------------------------------------------------------------------------
// Files

void MainWindow::openFile(const QString& path) { document_->open(path); }

void MainWindow::show_opened() {
    messages_->hide();
    show_graph_page();
    restyle();
    graph_->fitToWindow();
    if (graph_->viewer()->GetScale() > 1.0) graph_->zoomTo(1.0);
    graph_->setFocus();
    history_->start();
    find_panel_->setGraph(graph_->viewer()->GetGraph());
    status_->renew();
    follow_extent();
    note_recent(document_->path());
    show_title();
    enable_actions();
    // The picture is painted when the event loop comes to rest.
    QTimer::singleShot(0, this, [this] { QTimer::singleShot(0, this, &MainWindow::pictureShown); });
}

void MainWindow::show_graph_page() {
    if (pages_->currentWidget() == graph_) return;
    pages_->setCurrentWidget(graph_);
    overview_dock_->show();
    find_dock_->show();
    resizeDocks({overview_dock_}, {kOverviewSize.width()}, Qt::Horizontal);
    resizeDocks({overview_dock_, find_dock_},
                {kOverviewSize.height(), kFirstSize.height() - kOverviewSize.height()},
                Qt::Vertical);
    restoreState(QSettings().value("window/docks").toByteArray());
    // Now, not when the event loop comes to it: the graph is to be fitted into what is left.
    layout()->activate();
    centralWidget()->layout()->activate();
}

void MainWindow::note_recent(const QString& path) {
    // Examples are inside the program.
    if (path.startsWith(u':')) return;
    const QString full = QFileInfo(path).absoluteFilePath();
    recent_.removeAll(full);
    recent_.prepend(full);
    while (recent_.size() > kMostRecent) recent_.removeLast();
    start_page_->setRecentFiles(recent_);
}

void MainWindow::show_title() {
    const QString name = QFileInfo(document_->path()).fileName();
    setWindowTitle(name.isEmpty() ? QApplication::applicationDisplayName() : name);
    setWindowFilePath(document_->path().startsWith(u':') ? QString() : document_->path());
}

void MainWindow::tell(const QString& message) {
    messages_->tell(message);
    Q_EMIT told(message);
}

void MainWindow::mention(const QString& message) {
    statusBar()->showMessage(message, kMessageTime);
    Q_EMIT told(message);
}

void MainWindow::tell_status() { Q_EMIT told(status_->text()); }

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty()) return;
    const QString path = urls.front().toLocalFile();
    if (path.isEmpty())
        return tell(tr("%1: is no file on this machine").arg(urls.front().toString()));
    event->acceptProposedAction();
    openFile(path);
}

// ---------------------------------------------------------------------------------------------
// Settings and looks

void MainWindow::restore_settings(const WindowOptions& options) {
    const QSettings settings;
    resize(kFirstSize);
    restoreGeometry(settings.value("window/geometry").toByteArray());
    actions_[Command::kGlide]->setChecked(settings.value("view/glide", true).toBool());
    recent_ = settings.value("files/recent").toStringList();
    start_page_->setRecentFiles(recent_);
    const int stored = settings.value("view/appearance", 0).toInt();
    const auto known = stored == 1   ? Appearance::kLight
                       : stored == 2 ? Appearance::kDark
                                     : Appearance::kSystem;
    set_appearance(options.appearance.value_or(known));
    set_glide();
    set_mode();
}

void MainWindow::save_settings() {
    QSettings settings;
    settings.setValue("window/geometry", saveGeometry());
    // Nobody can have changed them beside the start page, where they are hidden.
    if (pages_->currentWidget() == graph_) settings.setValue("window/docks", saveState());
    settings.setValue("view/glide", actions_[Command::kGlide]->isChecked());
    settings.setValue("files/recent", recent_);
    const int appearance = actions_[Command::kLightColors]->isChecked()  ? 1
                           : actions_[Command::kDarkColors]->isChecked() ? 2
                                                                         : 0;
    settings.setValue("view/appearance", appearance);
}

void MainWindow::set_appearance(Appearance appearance) {
    const Command command = appearance == Appearance::kLight  ? Command::kLightColors
                            : appearance == Appearance::kDark ? Command::kDarkColors
                                                              : Command::kSystemColors;
    actions_[command]->setChecked(true);
    ApplyAppearance(appearance);
    restyle();
}

void MainWindow::set_glide() {
    const bool glides = actions_[Command::kGlide]->isChecked() && !DesktopReducesMotion();
    graph_->setGlideTime(glides ? kGlideTime : 0);
}

void MainWindow::restyle() {
    is_dark_ = IsDark(QApplication::palette());
    LoadJob::ApplyLookTo(graph_->viewer()->GetGraph(), is_dark_);
    graph_->GetControl().InvalidateAll();
    overview_->GetControl().InvalidateAll();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    const bool is_about_looks =
        event->type() == QEvent::PaletteChange || event->type() == QEvent::ThemeChange;
    if (is_about_looks && graph_ != nullptr && IsDark(QApplication::palette()) != is_dark_) {
        restyle();
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    save_settings();
    document_->cancel();
    event->accept();
}

}  // namespace nodeline::app
