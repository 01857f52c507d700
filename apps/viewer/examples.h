// Examples: the graphs that come with the desktop program, inside it.
#pragma once

#include <QString>
#include <vector>

namespace nodeline::app {

struct Example {
    QString title;
    // One sentence, without a full stop.
    QString description;
    // What a `QFile` opens; one that starts with ":/" is inside the program.
    QString path;
};

// From small to large.
[[nodiscard]] std::vector<Example> BuiltInExamples();

}  // namespace nodeline::app
