#include <apps/viewer/document.h>

#include <QDir>
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

QString Document::loadingPath() const { return job_ != nullptr ? job_->options().path : QString(); }

QString Document::phase() const { return job_ != nullptr ? job_->phase() : QString(); }

void Document::open(const QString& path) { start(path, false); }

void Document::reload() {
    if (!path_.isEmpty()) start(path_, true);
}

void Document::start(const QString& path, bool is_reload) {
    drop_job();
    LoadOptions options;
    options.path = path;
    options.layout = layout_;
    options.is_laid_out = !is_reload;
    job_stamp_ = StampOf(path);
    job_ = new LoadJob(options, this);
    connect(job_, &LoadJob::finished, this, [this, job = job_] { take(job); });
    Q_EMIT loadingStarted();
    job_->start();
}

void Document::cancel() {
    if (job_ == nullptr) return;
    if (!job_->options().is_laid_out) seen_ = job_stamp_;
    drop_job();
    settle_timer_.start();
}

void Document::drop_job() {
    if (job_ == nullptr) return;
    std::exchange(job_, nullptr)->cancel();
    Q_EMIT loadingEnded();
}

// Whatever comes of it, the shown file may have changed meanwhile.
void Document::take(LoadJob* job) {
    job->deleteLater();
    if (job != job_) return;
    job_ = nullptr;
    settle_timer_.start();
    Q_EMIT loadingEnded();
    const bool is_failure = !job->failure().isEmpty();
    const bool is_reload = !job->options().is_laid_out;
    if (is_reload || !is_failure) {
        path_ = job->options().path;
        seen_ = job_stamp_;
        watch();
    }
    if (is_failure) {
        Q_EMIT failed(job->failure());
        return;
    }
    is_reload ? merge(job) : show(job);
    if (!job->warnings().isEmpty()) Q_EMIT warned(job->warnings().join(u'\n'));
}

void Document::show(LoadJob* job) {
    is_gone_ = false;
    widget_->showGraph(job->graph());
    Q_EMIT opened();
}

void Document::merge(LoadJob* job) {
    is_gone_ = false;
    MergeResult result;
    widget_->change([&] { result = Merge(widget_->viewer()->GetGraph(), job->graph()); });
    Q_EMIT reloaded(result);
}

// ---------------------------------------------------------------------------------------------
// The file on disk

Document::Stamp Document::StampOf(const QString& path) {
    const QFileInfo info(path);
    return {info.lastModified(), info.size()};
}

// The folder is watched as well: many programs replace a file by a new one of the same name.
void Document::watch() {
    const QStringList old = watcher_.files() + watcher_.directories();
    if (!old.isEmpty()) watcher_.removePaths(old);
    if (path_.startsWith(u':')) return;
    const QFileInfo info(path_);
    if (info.isFile()) watcher_.addPath(info.absoluteFilePath());
    if (info.dir().exists()) watcher_.addPath(info.absolutePath());
}

void Document::look_at_file() {
    // It is looked at again when that has ended.
    if (job_ != nullptr || path_.isEmpty()) return;
    if (!QFileInfo::exists(path_)) {
        if (!std::exchange(is_gone_, true)) {
            Q_EMIT warned(tr("%1 has gone; what it held is still shown").arg(path_));
        }
        return;
    }
    if (!std::exchange(is_gone_, false) && StampOf(path_) == seen_) return;
    reload();
}

}  // namespace nodeline::app
