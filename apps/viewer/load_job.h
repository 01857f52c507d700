// Load job: reads a graph file on a thread of its own, and lays the graph out if it is to be shown.
#pragma once

#include <formats/graph_file.h>
#include <nodeline/model/graph.h>

#include <QObject>
#include <QString>
#include <QStringList>
#include <atomic>
#include <memory>
#include <string>
#include <thread>

namespace nodeline::app {

enum class LayoutKind { kStable, kInc };

struct LoadOptions {
    QString path;
    LayoutKind layout = LayoutKind::kStable;
    // Off where the graph is only to be compared with the one that is shown.
    bool is_laid_out = true;
};

// Lives on the thread that made it, which hears of the end. The graph belongs to the job's thread
// until then. A job that is destroyed waits for its thread.
class LoadJob : public QObject {
    Q_OBJECT

public:
    explicit LoadJob(LoadOptions options, QObject* parent = nullptr);
    ~LoadJob() override;

    // Sets the look of a graph that a job has loaded.
    static void ApplyLookTo(const graph_ptr2<Graph>& graph, bool is_dark);

    void start();
    // Ends the work at the next node that is read or measured; `finished` comes all the same.
    void cancel();

    [[nodiscard]] bool isCancelled() const { return *is_cancelled_; }
    [[nodiscard]] const LoadOptions& options() const { return options_; }
    // What the job is at, for people.
    [[nodiscard]] QString phase() const;

    // Once it has finished. An empty failure is a success.
    [[nodiscard]] const QString& failure() const { return failure_; }
    [[nodiscard]] const QStringList& warnings() const { return warnings_; }
    [[nodiscard]] const graph_ptr2<Graph>& graph() const { return graph_; }

Q_SIGNALS:
    void finished();

private:
    struct Cancelled {};
    class Handler;

    void run();
    void load();
    void lay_out();
    void check() const;

    LoadOptions options_;
    graph_ptr2<Graph> graph_;
    // Outlives the job in the handler of its graph.
    std::shared_ptr<std::atomic<bool>> is_cancelled_ = std::make_shared<std::atomic<bool>>(false);
    std::atomic<int> node_count_ = 0;
    std::atomic<bool> is_read_ = false;
    std::atomic<bool> has_ended_ = false;
    bool has_layout_ = false;
    QString failure_;
    QStringList warnings_;
    std::thread thread_;
};

}  // namespace nodeline::app
