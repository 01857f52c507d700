#include <apps/viewer/load_job.h>
#include <apps/viewer/theme.h>
#include <apps/viewer/viewer_edge_handler.h>
#include <apps/viewer/viewer_node_handler.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

namespace nodeline::app {

class LoadJob::Handler : public ViewerNodeHandler {
public:
    explicit Handler(std::shared_ptr<std::atomic<bool>> is_cancelled)
        : is_cancelled_(std::move(is_cancelled)) {}

    // The other half of the look.
    [[nodiscard]] const graph_ptr2<ViewerEdgeHandler>& edges() const { return edges_; }

    nodeline::size<double> GetSize(Node node) override {
        if (*is_cancelled_) throw Cancelled();
        return ViewerNodeHandler::GetSize(node);
    }
    NodeFrame GetSize(Node node, nodeline::size<double> inner) override {
        if (*is_cancelled_) throw Cancelled();
        return ViewerNodeHandler::GetSize(node, inner);
    }

private:
    std::shared_ptr<std::atomic<bool>> is_cancelled_;
    graph_ptr2<ViewerEdgeHandler> edges_{new ViewerEdgeHandler, true};
};

// The graph gets what is its own here, for two threads may not share a handler or a layout.
LoadJob::LoadJob(LoadOptions options, QObject* parent)
    : QObject(parent), options_(std::move(options)), graph_(new Graph(), true) {
    const graph_ptr2<Handler> handler(new Handler(is_cancelled_), true);
    graph_->SetDefaultNodeHandler(checked_upcast<INodeHandler>(handler));
    graph_->SetDefaultEdgeHandler(checked_upcast<IEdgeHandler>(handler->edges()));
    ApplyLookTo(graph_, IsDark(QApplication::palette()));
    if (options_.layout == LayoutKind::kStable) {
        graph_->SetDefaultLayout(checked_upcast<ILayout>(
            StableLayout::Create({.caption_room = StableLayout::Options::kCaptionRoom})));
    } else {
        graph_->SetDefaultLayout(checked_upcast<ILayout>(IncLayout::Create()));
    }
}

void LoadJob::ApplyLookTo(const graph_ptr2<Graph>& graph, bool is_dark) {
    auto* const handler = dynamic_cast<Handler*>(graph->GetDefaultNodeHandler().get());
    if (handler != nullptr) ApplyLook(is_dark, *handler, *handler->edges());
}

// A graph that is shown goes on being measured when its job has gone.
LoadJob::~LoadJob() {
    if (!has_ended_) cancel();
    if (thread_.joinable()) thread_.join();
}

void LoadJob::start() { thread_ = std::thread(&LoadJob::run, this); }

void LoadJob::cancel() { *is_cancelled_ = true; }

QString LoadJob::phase() const {
    if (isCancelled()) return tr("Cancelling…");
    if (!is_read_) return tr("Reading %L1 nodes…").arg(node_count_.load());
    return tr("Laying out %L1 nodes…").arg(node_count_.load());
}

void LoadJob::check() const {
    if (isCancelled()) throw Cancelled();
}

void LoadJob::run() {
    try {
        load();
        if (options_.is_laid_out) lay_out();
    } catch (const Cancelled&) {
        failure_ = tr("Loading was cancelled.");
    } catch (const std::bad_alloc&) {
        failure_ = tr("%1: there is not enough memory").arg(options_.path);
    } catch (const std::exception& error) {
        failure_ = QString::fromUtf8(error.what());
    }
    has_ended_ = true;
    QMetaObject::invokeMethod(this, &LoadJob::finished, Qt::QueuedConnection);
}

void LoadJob::load() {
    QFile file(options_.path);
    const auto fail = [&](const QString& what) {
        const QString reason = tr("%1: %2: %3").arg(options_.path, what, file.errorString());
        throw std::runtime_error(reason.toStdString());
    };
    if (!file.open(QIODevice::ReadOnly)) fail(tr("cannot be opened"));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError) fail(tr("cannot be read"));
    formats::ReadOptions read;
    read.check = [this] {
        check();
        ++node_count_;
    };
    const formats::ReadReport report =
        formats::ReadGraph(graph_, options_.path.toStdString(), bytes.toStdString(), read);
    for (const std::string& warning : report.warnings) {
        warnings_.append(QString::fromStdString(warning));
    }
    auto& handler = dynamic_cast<Handler&>(*graph_->GetDefaultNodeHandler());
    handler.SetLooks(report.looks.nodes);
    handler.edges()->SetLooks(report.looks.edges);
    has_layout_ = report.has_layout;
    check();
    is_read_ = true;
}

// A file may bring its layout along.
void LoadJob::lay_out() {
    if (!has_layout_) graph_->GetRoot().MakeLayout();
    graph_->RecalculateLayout(nullptr);
    check();
}

}  // namespace nodeline::app
