// The DOT parser, behind the lock that it needs: one thread at a time may have parsed graphs.
#pragma once

#ifdef NODELINE_WITH_DOT

#include <graphviz/cgraph.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace nodeline::formats {

class ParsedDot {
public:
    // Parses all graphs of a file. Throws `ReadError` if one of them has an error, and if there is
    // none.
    ParsedDot(const std::string& name, std::string_view text);

    [[nodiscard]] std::vector<Agraph_t*> graphs() const;
    // What the parser warned of, in one line; empty if it did not.
    [[nodiscard]] const std::string& warning() const { return warning_; }

private:
    struct Close {
        void operator()(Agraph_t* graph) const { agclose(graph); }
    };

    std::unique_lock<std::mutex> lock_;
    std::vector<std::unique_ptr<Agraph_t, Close>> graphs_;
    std::string warning_;
};

}  // namespace nodeline::formats

#endif
