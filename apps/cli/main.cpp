#include <apps/cli/commands.h>
#include <apps/cli/view_change.h>

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <new>
#include <string>
#include <vector>

namespace nodeline::cli {

namespace {

std::string check_scale(const std::string& text) {
    char* end = nullptr;
    const double scale = std::strtod(text.c_str(), &end);
    const bool is_fit = end != text.c_str() && *end == '\0' && std::isfinite(scale) && scale > 0.0;
    return is_fit ? std::string() : text + " is not a number above 0";
}

std::string check_side(const std::string& text) {
    if (ParseSide(text)) return {};
    return text + " ends neither in :parents nor in :children";
}

std::string check_id(const std::string& text) {
    return IsId(text) ? std::string() : text + " is not the id of a node";
}

// The changes in the order of the command line, which goes from one option to another.
std::vector<ViewChange> changes_of(const CLI::App& command) {
    std::vector<ViewChange> changes;
    std::map<const CLI::Option*, std::size_t> taken;
    for (const CLI::Option* option : command.parse_order()) {
        const std::string name = option->get_name();
        if (name != "--fold" && name != "--unfold" && name != "--hide") continue;
        const std::string& text = option->results().at(taken[option]++);
        if (name == "--hide") {
            changes.push_back({ViewChange::Kind::kHide, text, FoldParents});
        } else {
            const auto kind =
                name == "--fold" ? ViewChange::Kind::kFold : ViewChange::Kind::kUnfold;
            const Side side = ParseSide(text).value();
            changes.push_back({kind, side.node, side.direction});
        }
    }
    return changes;
}

void add_change_options(CLI::App& command) {
    const auto add = [&](const char* name, const char* value, const std::string& help) {
        return command.add_option(name, help)->expected(1)->take_all()->type_name(value);
    };
    add("--fold", "NODE:SIDE",
        "hide the neighbours of a node, given by its id or caption; the side is parents or "
        "children. This and the next two may be repeated and are carried out in their order")
        ->check(check_side);
    add("--unfold", "NODE:SIDE", "show the neighbours of a node again")->check(check_side);
    add("--hide", "ID", "hide a node, given by its id in the file")->check(check_id);
}

void add_layout_option(CLI::App& command, std::string& layout) {
    command
        .add_option("--layout", layout,
                    "how the graph is laid out: stable, or inc, the plain incremental layout; " +
                        layout + " if left out")
        ->check(CLI::IsMember({"stable", "inc"}));
}

std::string check_shown_file(const std::string& path) {
    return path == "-" ? "standard input cannot be shown in a window" : std::string();
}

void add_graph_options(CLI::App& command, GraphOptions& options) {
    command.add_option("INPUT", options.input, "the graph file; - is standard input")->required();
    command.add_flag("--all", options.show_all,
                     "show every node, also where captions that hold \"Thread\" narrow the view");
    command
        .add_option("--handler", options.handler,
                    "how nodes look: port, boxes of one width with ports, simple, boxes with "
                    "captions, or default, bare rectangles; " +
                        options.handler + " if left out")
        ->check(CLI::IsMember({"port", "simple", "default"}));
    add_layout_option(command, options.layout);
    add_change_options(command);
}

class Program {
public:
    Program() : app_("Lays out directed graphs from left to right, and draws them.", "nodeline") {
        app_.set_version_flag("--version", "nodeline " NODELINE_VERSION);
        app_.require_subcommand(1);
        add_render();
        add_view();
        CLI::App* layout =
            app_.add_subcommand("layout", "print the coordinates of a graph as JSON");
        add_graph_options(*layout, layout_);
        layout->callback([this, layout] {
            layout_.changes = changes_of(*layout);
            run_ = [this] { RunLayout(layout_); };
        });
        add_convert();
        CLI::App* replay = app_.add_subcommand("replay", "carry out a replay script");
        replay->add_option("SCRIPT", script_, "the script; - is standard input")->required();
        replay->callback([this] { run_ = [this] { RunReplayScript(script_); }; });
    }

    int Run(int argc, char** argv) {
        try {
            app_.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            if (error.get_exit_code() == 0) return app_.exit(error);
            std::cerr << "nodeline: " << error.what() << '\n';
            return kWrongUsage;
        }
        run_();
        return kDone;
    }

private:
    void add_render() {
        CLI::App* render = app_.add_subcommand("render", "draw a graph as SVG, PDF or PNG");
        render_.graph.handler = "port";
        add_graph_options(*render, render_.graph);
        render->add_option("-o,--output", render_.output,
                           "the picture; without it, it stands beside the input; - is standard "
                           "output");
        render
            ->add_option("--format", render_.format,
                         "svg, pdf or png; without it, what the name of the picture says")
            ->check(CLI::IsMember({"svg", "pdf", "png"}));
        render->add_option("--scale", render_.scale, "pixels per unit; 1 if left out")
            ->check(check_scale);
        render->callback([this, render] {
            render_.graph.changes = changes_of(*render);
            run_ = [this] { RunRender(render_); };
        });
    }

    void add_convert() {
        CLI::App* convert = app_.add_subcommand("convert", "write a graph in another format");
        convert->add_option("INPUT", convert_.input, "the graph file; - is standard input")
            ->required();
        convert->add_option("OUTPUT", convert_.output, "the new file; - is standard output")
            ->required();
        convert
            ->add_option("--to", convert_.format,
                         "text, dot, graphml or json; without it, what the name of the output says")
            ->check(CLI::IsMember({"text", "dot", "graphml", "json"}));
        convert->callback([this] { run_ = [this] { RunConvert(convert_); }; });
    }

    void add_view() {
        CLI::App* view = app_.add_subcommand("view", "show a graph in a window, to be explored");
        view->add_option("FILE", view_.input, "the graph file")
            ->required()
            ->check(check_shown_file);
        add_layout_option(*view, view_.layout);
        view->callback([this] { run_ = [this] { RunView(view_); }; });
    }

    CLI::App app_;
    RenderOptions render_;
    ViewOptions view_;
    GraphOptions layout_;
    ConvertOptions convert_;
    std::string script_;
    std::function<void()> run_;
};

}  // namespace

int RunMain(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    try {
        return Program().Run(argc, argv);
    } catch (const Failure& failure) {
        std::cerr << failure.what() << '\n';
        return failure.status();
    } catch (const std::bad_alloc&) {
        std::cerr << "nodeline: there is not enough memory\n";
    } catch (const std::exception& error) {
        std::cerr << "nodeline: " << error.what() << '\n';
    }
    return kBadInput;
}

}  // namespace nodeline::cli

int main(int argc, char** argv) { return nodeline::cli::RunMain(argc, argv); }
