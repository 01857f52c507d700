// Names of nodes and files as they fit into labels.
#pragma once

#include <nodeline/model/graph.h>

#include <QString>

namespace nodeline::app {

// The caption on one line, with no more than `most` characters.
[[nodiscard]] inline QString ShortCaption(const Node& node, int most) {
    const QString caption = QString::fromStdString(node.GetCaption()).simplified();
    return caption.size() > most ? caption.left(most - 1) + u'…' : caption;
}

// For the text of an action, where an ampersand underlines what follows it.
[[nodiscard]] inline QString WithoutMnemonics(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

}  // namespace nodeline::app
