#include <apps/viewer/document.h>

#include <QFileInfo>
#include <utility>

namespace nodeline::app {

namespace {

constexpr int kSettleTime = 150;  // in milliseconds

}  // namespace

Document::Document(qt::GraphWidget* widget, QObject* parent) : QObject(parent), widget_(widget) {
    settle_timer_.setSingleShot(true);
    settle_timer_.setInterval(kSettleTime);
    connect(&settle_timer_, &QTimer::timeout, this, &Document::look_at_file);
    const auto settle = [this] { settle_timer_.start(); };
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, settle);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, settle);
}

Document::~Document() = default;

QString Document::loadingPath() const { return job_ != nullptr ? job_->options().path : QString(); }

QString Document::phase() const { return job_ != nullptr ? job_->phase() : QString(); }

void Document::open(const QString& path) { start(path, false); }

void Document::reload() {
    if (!path_.isEmpty()) start(path_, true);
}

void Document::start(const QString& path, bool is_reload) {
    cancel();
    LoadOptions options;
    options.path = path;
    options.layout = layout_;
    options.is_laid_out = !is_reload;
    job_ = new LoadJob(options, this);
    connect(job_, &LoadJob::finished, this, [this, job = job_] { take(job); });
    Q_EMIT loadingStarted();
    job_->start();
}

void Document::cancel() {
    if (job_ == nullptr) return;
    std::exchange(job_, nullptr)->cancel();
    Q_EMIT loadingEnded();
}

void Document::take(LoadJob* job) {
    job->deleteLater();
    if (job != job_) return;
    job_ = nullptr;
    Q_EMIT loadingEnded();
    if (!job->failure().isEmpty()) {
        Q_EMIT failed(job->failure());
        return;
    }
    for (const QString& warning : job->warnings()) Q_EMIT warned(warning);
    if (job->options().is_laid_out) {
        show(job);
    } else {
        merge(job);
    }
}

void Document::show(LoadJob* job) {
    path_ = job->options().path;
    watch();
    widget_->showGraph(job->graph());
    Q_EMIT opened();
}

void Document::merge(LoadJob* job) {
    watch();
    MergeResult result;
    widget_->change([&] { result = Merge(widget_->viewer()->GetGraph(), job->graph()); });
    Q_EMIT reloaded(result);
}

// ---------------------------------------------------------------------------------------------
// The file on disk

// The folder is watched as well: many programs replace a file by a new one of the same name.
void Document::watch() {
    const QStringList old = watcher_.files() + watcher_.directories();
    if (!old.isEmpty()) watcher_.removePaths(old);
    is_gone_ = false;
    const QFileInfo info(path_);
    seen_time_ = info.lastModified();
    seen_size_ = info.size();
    if (path_.startsWith(u':') || !info.isFile()) return;
    watcher_.addPath(info.absoluteFilePath());
    watcher_.addPath(info.absolutePath());
}

void Document::look_at_file() {
    const QFileInfo info(path_);
    if (!info.exists()) {
        if (!std::exchange(is_gone_, true)) {
            Q_EMIT warned(tr("%1 has gone; what it held is still shown").arg(path_));
        }
        return;
    }
    const bool is_same = info.lastModified() == seen_time_ && info.size() == seen_size_;
    if (!std::exchange(is_gone_, false) && is_same) return;
    reload();
}

}  // namespace nodeline::app
