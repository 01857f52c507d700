// Document: the file whose graph a widget shows.
#pragma once

#include <apps/viewer/load_job.h>
#include <apps/viewer/merge.h>
#include <backends/qt/graph_widget.h>

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QTimer>

namespace nodeline::app {

// Opens files, and follows the one that is shown: when it changes on disk, the graph is brought up
// to date, and what remains of it keeps its place. A file that cannot be read changes nothing.
class Document : public QObject {
    Q_OBJECT

public:
    // The widget is not owned and lives longer.
    explicit Document(qt::GraphWidget* widget, QObject* parent = nullptr);

    // For the files that are opened from now on.
    void setLayout(LayoutKind layout) { layout_ = layout; }
    // Starts to load a file, in the place of any that is being loaded.
    void open(const QString& path);
    // Starts to read the shown file again.
    void reload();
    // Gives up what is being loaded; what is shown stays, until its file changes once more.
    void cancel();

    // Empty as long as nothing is shown.
    [[nodiscard]] const QString& path() const { return path_; }
    // What is being loaded: its file, and what is being done with it; empty for nothing.
    [[nodiscard]] QString loadingPath() const;
    [[nodiscard]] QString phase() const;

Q_SIGNALS:
    void loadingStarted();
    void loadingEnded();
    // Another graph is shown.
    void opened();
    // The shown graph was brought up to date, or was so already.
    void reloaded(const nodeline::app::MergeResult& result);
    // Something a person should know. The second is about a file that could not be shown.
    void warned(const QString& message);
    void failed(const QString& message);

private:
    // What tells one writing of a file from another.
    struct Stamp {
        QDateTime time;
        qint64 size = 0;

        bool operator==(const Stamp& other) const {
            return time == other.time && size == other.size;
        }
    };
    [[nodiscard]] static Stamp StampOf(const QString& path);

    void start(const QString& path, bool is_reload);
    void take(LoadJob* job);
    void show(LoadJob* job);
    void merge(LoadJob* job);
    void drop_job();
    void watch();
    void look_at_file();

    qt::GraphWidget* widget_;
    LayoutKind layout_ = LayoutKind::kStable;
    QString path_;
    // The one whose result is wanted; others end by themselves.
    LoadJob* job_ = nullptr;
    // Of the file that is being loaded, before it was read: it may be written meanwhile.
    Stamp job_stamp_;
    QFileSystemWatcher watcher_;
    // A file that is being written changes several times.
    QTimer settle_timer_;
    // Of the shown file when it was read last, with success or without.
    Stamp seen_;
    bool is_gone_ = false;
};

}  // namespace nodeline::app
