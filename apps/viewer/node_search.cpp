#include <apps/viewer/node_search.h>
#include <nodeline/ops/graph_ops.h>

#include <QStringList>
#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace nodeline::app {

void NodeSearch::Collect(const graph_ptr2<Graph>& graph) {
    entries_.clear();
    by_caption_.clear();
    is_nested_ = false;
    if (!graph) return;

    std::unordered_map<int, std::size_t> index_of;
    const auto collect = [&](const Node& node) {
        const QString caption = QString::fromStdString(node.GetCaption());
        const auto owner = index_of.find(node.GetOwner().GetID());
        Entry entry{node, caption, caption.toCaseFolded(), kNone, false};
        if (owner != index_of.end()) entry.owner = owner->second;
        is_nested_ = is_nested_ || entry.owner != kNone;
        index_of.emplace(node.GetID(), entries_.size());
        entries_.push_back(std::move(entry));
    };
    ForEachNodeIn(graph->GetRoot(), collect, false, false);

    by_caption_.resize(entries_.size());
    std::iota(by_caption_.begin(), by_caption_.end(), std::size_t{0});
    std::stable_sort(by_caption_.begin(), by_caption_.end(), [this](std::size_t a, std::size_t b) {
        return entries_[a].folded < entries_[b].folded;
    });
    Refresh();
}

void NodeSearch::Refresh() {
    for (Entry& entry : entries_) {
        const bool is_owner_hidden = entry.owner != kNone && entries_[entry.owner].is_hidden;
        entry.is_hidden = is_owner_hidden || IsFlagSet(entry.node, NodeHidden);
    }
}

NodeSearch::Result NodeSearch::Find(const QString& text, std::size_t most) const {
    Result result;
    const QString wanted = text.trimmed().toCaseFolded();

    std::vector<std::size_t> others;
    for (const std::size_t index : by_caption_) {
        const Entry& entry = entries_[index];
        const qsizetype at = entry.folded.indexOf(wanted);
        if (at < 0) continue;
        ++result.count;
        result.hidden_count += entry.is_hidden ? 1 : 0;
        std::vector<std::size_t>& rows = at == 0 ? result.rows : others;
        if (rows.size() < most) rows.push_back(index);
    }
    const std::size_t room = std::min(most - result.rows.size(), others.size());
    result.rows.insert(result.rows.end(), others.begin(),
                       others.begin() + static_cast<std::ptrdiff_t>(room));
    return result;
}

const QString& NodeSearch::GetCaption(std::size_t index) const { return entries_[index].caption; }

QString NodeSearch::GetPath(std::size_t index) const {
    QStringList captions;
    for (std::size_t at = entries_[index].owner; at != kNone; at = entries_[at].owner) {
        captions.prepend(entries_[at].caption);
    }
    return captions.join(QStringLiteral(" \u203a "));
}

}  // namespace nodeline::app
