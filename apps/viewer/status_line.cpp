#include <apps/viewer/status_line.h>
#include <apps/viewer/view_edits.h>
#include <apps/viewer/wording.h>
#include <nodeline/ops/graph_ops.h>

#include <algorithm>

namespace nodeline::app {

namespace {

// So many captions are told, and so much of each.
constexpr std::size_t kMostCaptions = 3;
constexpr int kMostCharacters = 30;

QString Percent(double scale) {
    const double percent = scale * 100.0;
    return QStringLiteral("%1 %").arg(percent, 0, 'f', percent < 10.0 ? 1 : 0);
}

QString Selection(const std::vector<Node>& nodes) {
    if (nodes.empty()) return {};
    QStringList captions;
    for (const Node& node : nodes) {
        if (captions.size() == static_cast<qsizetype>(kMostCaptions)) break;
        captions.append(ShortCaption(node, kMostCharacters));
    }
    if (nodes.size() > kMostCaptions) captions.append(QStringLiteral("…"));
    return QObject::tr("%L1 selected: %2")
        .arg(nodes.size())
        .arg(captions.join(QStringLiteral(", ")));
}

}  // namespace

std::vector<Node> SelectedInSight(const qt::GraphWidget& widget) {
    std::vector<Node> nodes = widget.selectedNodes();
    nodes.erase(std::remove_if(nodes.begin(), nodes.end(), IsOutOfSight), nodes.end());
    return nodes;
}

StatusLine::StatusLine(QStatusBar* bar, qt::GraphWidget* widget)
    : QObject(bar),
      widget_(widget),
      nodes_(new QLabel(bar)),
      zoom_(new QLabel(bar)),
      selection_(new QLabel(bar)) {
    for (QLabel* label : {selection_, nodes_, zoom_}) {
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(6, 0, 6, 0);
        bar->addPermanentWidget(label);
    }
    connect(widget, &qt::GraphWidget::graphChanged, this, &StatusLine::count);
    connect(widget, &qt::GraphWidget::graphChanged, this, &StatusLine::show_selection);
    connect(widget, &qt::GraphWidget::viewChanged, this, &StatusLine::show_zoom);
    connect(widget, &qt::GraphWidget::selectionChanged, this, &StatusLine::show_selection);
}

void StatusLine::renew() {
    count();
    show_zoom();
    show_selection();
}

void StatusLine::clear() {
    for (QLabel* label : {selection_, nodes_, zoom_}) label->clear();
}

QString StatusLine::text() const {
    QStringList parts;
    for (const QLabel* label : {nodes_, zoom_, selection_}) {
        if (!label->text().isEmpty()) parts.append(label->text());
    }
    return parts.join(QStringLiteral(", "));
}

void StatusLine::set(QLabel* label, const QString& text) {
    if (label->text() == text) return;
    label->setText(text);
    Q_EMIT changed();
}

void StatusLine::count() {
    const graph_ptr2<Graph> graph = widget_->viewer()->GetGraph();
    MarkDrawnIn(graph);
    int all = 0;
    int shown = 0;
    const auto add = [&](const Node& node) {
        ++all;
        shown += IsFlagSet(node, NodeDrawn) ? 1 : 0;
    };
    ForEachNodeIn(graph->GetRoot(), add, false, false);
    set(nodes_, tr("%L1 of %L2 nodes").arg(shown).arg(all));
}

void StatusLine::show_zoom() {
    if (nodes_->text().isEmpty() || widget_->viewer() == nullptr) return;
    set(zoom_, Percent(widget_->viewer()->GetScale()));
}

void StatusLine::show_selection() { set(selection_, Selection(SelectedInSight(*widget_))); }

}  // namespace nodeline::app
