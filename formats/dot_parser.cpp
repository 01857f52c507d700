#include <formats/dot_parser.h>

#ifdef NODELINE_WITH_DOT

#include <formats/read_error.h>

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace nodeline::formats {

namespace {

// Parsing takes memory for each node in each level around it.
constexpr int kDeepest = 1000;

std::mutex& parser_mutex() {
    static std::mutex mutex;
    return mutex;
}

// What the parser said since the last reading began; it comes in pieces.
std::string& messages() {
    static std::string text;
    return text;
}

int collect(char* message) {
    constexpr std::size_t kEnough = 4096;
    if (messages().size() < kEnough) messages() += message;
    return 0;
}

int read_block(void* channel, char* buffer, int size) {
    auto& rest = *static_cast<std::string_view*>(channel);
    const std::string_view block = rest.substr(0, static_cast<std::size_t>(std::max(size, 0)));
    std::copy(block.begin(), block.end(), buffer);
    rest.remove_prefix(block.size());
    return static_cast<int>(block.size());
}

// What a nesting of braces skips over: comments, strings and HTML labels. `at` is where one may
// begin; answers the last byte of it.
std::size_t end_of_quote(std::string_view text, std::size_t at) {
    const auto find_end = [&](std::string_view end, std::size_t from) {
        const std::size_t found = text.find(end, from);
        return found == std::string_view::npos ? text.size() : found + end.size() - 1;
    };
    const char next = at + 1 < text.size() ? text[at + 1] : '\0';
    const bool begins_line = at == 0 || text[at - 1] == '\n';
    if (text[at] == '/' && next == '*') return find_end("*/", at + 2);
    if ((text[at] == '/' && next == '/') || (text[at] == '#' && begins_line)) {
        return find_end("\n", at);
    }
    if (text[at] == '"') {
        for (++at; at < text.size() && text[at] != '"'; ++at) {
            if (text[at] == '\\') ++at;
        }
    } else if (text[at] == '<') {
        int depth = 1;
        while (depth > 0 && ++at < text.size()) {
            depth += text[at] == '<' ? 1 : (text[at] == '>' ? -1 : 0);
        }
    }
    return at;
}

void check_text(const std::string& name, std::string_view text) {
    const std::size_t zero = text.find('\0');
    if (zero != std::string_view::npos) {
        throw ReadError(name, LineAt(text, zero), "a byte of the value 0 belongs in no DOT file");
    }
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        depth += text[at] == '{' ? 1 : (text[at] == '}' ? -1 : 0);
        if (depth > kDeepest) {
            throw ReadError(name, LineAt(text, at),
                            "braces are nested more than " + std::to_string(kDeepest) + " deep");
        }
        at = end_of_quote(text, at);
    }
}

// "Error: syntax error in line 3 near '}'" as "FILE:3: syntax error near '}'".
ReadError error_of(const std::string& name, std::string_view message) {
    constexpr std::string_view kError = "Error: ";
    constexpr std::string_view kLine = " in line ";
    const std::size_t start = message.find(kError);
    if (start != std::string_view::npos) message.remove_prefix(start + kError.size());
    message = message.substr(0, message.find_last_not_of('\n') + 1);
    const std::size_t at = message.find(kLine);
    if (at == std::string_view::npos) return {name, 0, Quote(message)};
    int line = 0;
    const std::string_view rest = message.substr(at + kLine.size());
    const char* digits_end = std::from_chars(rest.data(), rest.data() + rest.size(), line).ptr;
    const std::string_view place = rest.substr(static_cast<std::size_t>(digits_end - rest.data()));
    return {name, line, std::string(message.substr(0, at)) + Quote(place)};
}

std::string first_line(std::string_view text) {
    constexpr std::string_view kWarning = "Warning: ";
    if (text.substr(0, kWarning.size()) == kWarning) text.remove_prefix(kWarning.size());
    return Quote(text.substr(0, text.find('\n')));
}

constexpr const char* kLooseEnd = "the end of the file belongs to no graph";

void start_parser() {
    messages().clear();
    agreseterrors();
    agseterrf(&collect);
    agsetfile(nullptr);
    // So that a node without a label can be told from one with an empty label.
    static std::string label_name = "label";
    static std::string own_name = "\\N";
    agattr(nullptr, AGNODE, label_name.data(), own_name.data());
}

Agraph_t* read_graph(std::string_view& text) {
    static Agiodisc_t io = {&read_block, AgIoDisc.putstr, AgIoDisc.flush};
    static Agdisc_t disc = {AgDefaultDisc.mem, AgDefaultDisc.id, &io};
    return agread(&text, &disc);
}

// Whether the next file will be read from its beginning. The scanner keeps its state, so a comment
// or a string that is left open goes on there, and so does what stands behind the last graph.
bool is_parser_ready() {
    agreseterrors();
    std::string_view probe = "graph {}\n";
    Agraph_t* graph = read_graph(probe);
    if (graph == nullptr) return false;
    agclose(graph);
    return agerrors() < AGERR && read_graph(probe) == nullptr && agerrors() < AGERR;
}

// Closes whatever `text` may have left open.
void free_parser(std::string_view text) {
    const auto opened = std::count(text.begin(), text.end(), '<') + 1;
    const std::string closers[] = {"*/", "\"", std::string(static_cast<std::size_t>(opened), '>')};
    for (const std::string& closer : closers) {
        std::string_view rest = closer;
        while (Agraph_t* graph = read_graph(rest)) agclose(graph);
        if (is_parser_ready()) return;
    }
}

}  // namespace

ParsedDot::ParsedDot(const std::string& name, std::string_view text) : lock_(parser_mutex()) {
    check_text(name, text);
    start_parser();
    std::string_view rest = text;
    while (Agraph_t* graph = read_graph(rest)) graphs_.emplace_back(graph);
    const bool has_error = agerrors() >= AGERR;
    const std::string said = messages();
    const bool is_at_end = is_parser_ready();
    if (!is_at_end) free_parser(text);
    if (has_error) throw error_of(name, said);
    if (!is_at_end) throw ReadError(name, LineAt(text, text.size()), kLooseEnd);
    if (graphs_.empty()) throw ReadError(name, 1, "there is no graph in the file");
    if (!said.empty()) warning_ = first_line(said);
}

std::vector<Agraph_t*> ParsedDot::graphs() const {
    std::vector<Agraph_t*> graphs;
    for (const auto& graph : graphs_) graphs.push_back(graph.get());
    return graphs;
}

}  // namespace nodeline::formats

#endif
