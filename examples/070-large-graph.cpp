// Times what makes a graph of 20,000 nodes quick to show, each beside the slow way.

#include <backends/cairo/measuring_painter.h>
#include <backends/cairo/picture.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/viewer/draw_functions.h>

#include <cstddef>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <random>
#include <string>
#include <vector>

using nodeline::Graph;
using nodeline::graph_ptr2;
using nodeline::Node;
using paintcore::IPainter;

namespace {

// Functions in files in modules, and who calls whom.
constexpr int kModules = 20;
constexpr int kFilesInModule = 20;
constexpr int kFunctionsInFile = 50;

struct Program {
    graph_ptr2<Graph> graph{new Graph, true};
    std::vector<Node> modules;
    std::vector<Node> files;
    std::vector<Node> functions;
    std::mt19937 random;
};

Node AddNode(Node owner, const std::string& caption) {
    Node node = owner.AddNode();
    node.SetCaption(caption);
    return node;
}

// Most calls stay in a file, and come from one of its functions or two. One in five comes from
// anywhere.
void AddFunctions(Program& program, const Node& file) {
    auto& functions = program.functions;
    const std::size_t first = functions.size();
    const auto call = [&program](std::size_t from, std::size_t count, Node& to) {
        program.functions[from + program.random() % count].LinkTo(to);
    };
    for (std::size_t i = 0; i < kFunctionsInFile; ++i) {
        Node function = AddNode(file, "function " + std::to_string(first + i));
        if (i > 0) call(first, i, function);
        if (i % 2 == 1) call(first, i, function);
        if (i % 5 == 1) call(0, functions.size(), function);
        functions.push_back(function);
    }
}

void AddModule(Program& program) {
    program.modules.push_back(AddNode(program.graph->GetRoot(), "module"));
    for (int i = 0; i < kFilesInModule; ++i) {
        program.files.push_back(AddNode(program.modules.back(), "file"));
        AddFunctions(program, program.files.back());
    }
}

using Handler = graph_ptr2<nodeline::SimpleNodeHandler>;

Handler MakeHandler(IPainter& measure) {
    const Handler handler(new nodeline::SimpleNodeHandler, true);
    handler->SetIPainter(&measure);
    // All nodes are as wide as the longest caption that counts, so that there is one to measure.
    handler->GetDrawInfo().max_caption_length = 14;
    handler->GetDrawInfo().fixed_width = true;
    return handler;
}

Program MakeEmpty(const Handler& handler) {
    Program program;
    program.graph->SetDefaultNodeHandler(handler);
    // Each graph has a layout of its own; where an owner is as it was, an update passes over it.
    program.graph->SetDefaultLayout(nodeline::StableLayout::Create());
    return program;
}

Program MakeFull(const Handler& handler) {
    Program program = MakeEmpty(handler);
    for (int i = 0; i < kModules; ++i) AddModule(program);
    return program;
}

// Prints the processor time of `work`.
template <class Work>
void Time(const std::string& what, Work work) {
    const std::clock_t start = std::clock();
    work();
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    std::cout << std::fixed << std::setprecision(1) << std::setw(9) << 1000.0 * seconds << " ms  "
              << what << std::endl;
}

void TimeLayout(const std::string& what, const Program& program, IPainter& measure) {
    Time(what, [&] { program.graph->RecalculateLayout(&measure); });
}

void CompareCaptions(IPainter& measure) {
    std::cout << "Captions\n";
    const Handler by_caption = MakeHandler(measure);
    by_caption->GetDrawInfo().fixed_width = false;
    TimeLayout("each measured", MakeFull(by_caption), measure);
    TimeLayout("each measured before, in another graph", MakeFull(by_caption), measure);
    TimeLayout("one width for all", MakeFull(MakeHandler(measure)), measure);
}

void CompareBuilding(IPainter& measure) {
    const Handler handler = MakeHandler(measure);
    std::cout << "Building and the first layout\n";
    Time("no layout at all", [&] { MakeFull(handler); });
    Time("one layout, of all modules", [&] {
        const Program program = MakeFull(handler);
        program.graph->RecalculateLayout(&measure);
    });
    Time("one after each of the modules", [&] {
        Program program = MakeEmpty(handler);
        for (int i = 0; i < kModules; ++i) {
            AddModule(program);
            program.graph->GetRoot().UpdateLayout();
            program.graph->RecalculateLayout(&measure);
        }
    });
}

void AddCaller(const Node& file, const Node& callee) {
    Node caller = AddNode(file, "caller");
    caller.LinkTo(callee);
}

void CompareChanges(Program& program, IPainter& measure) {
    std::cout << "20 functions more, in one file\n";
    Node& file = program.files[7];
    const Node callee = file.GetOwned().GetItem(0);
    Time("and one update", [&] {
        for (int i = 0; i < 20; ++i) AddCaller(file, callee);
        file.UpdateLayout();
        program.graph->RecalculateLayout(&measure);
    });
    Time("and an update of everything", [&] {
        for (int i = 0; i < 20; ++i) AddCaller(file, callee);
        program.graph->GetRoot().UpdateLayout();
        program.graph->RecalculateLayout(&measure);
    });
    Time("with an update after each", [&] {
        for (int i = 0; i < 20; ++i) {
            AddCaller(file, callee);
            file.UpdateLayout();
            program.graph->RecalculateLayout(&measure);
        }
    });
    Time("nothing has been asked for", [&] { program.graph->RecalculateLayout(&measure); });
}

void HideContents(const Node& node) { nodeline::ForEachNodeIn(node, nodeline::Hide, false, false); }

void CompareHiding(IPainter& measure) {
    std::cout << "The first layout with less to show\n";
    const Handler handler = MakeHandler(measure);
    const Program modules = MakeFull(handler);
    for (const Node& node : modules.modules) nodeline::Hide(node);
    TimeLayout("modules hidden", modules, measure);

    const Program all = MakeFull(handler);
    HideContents(all.graph->GetRoot());
    TimeLayout("modules hidden, and what is in them", all, measure);

    Program closed = MakeFull(handler);
    for (const Node& file : closed.files) HideContents(file);
    TimeLayout("files shown, their functions hidden", closed, measure);
    Time("one file opened", [&] {
        nodeline::ForEachNodeIn(closed.files[7], nodeline::Show, false, false);
        closed.files[7].UpdateLayout();
        closed.graph->RecalculateLayout(&measure);
    });
}

bool ComparePainting(const Program& program) {
    std::cout << "A picture of 1600 by 1000 pixels\n";
    nodeline::MarkDrawnIn(program.graph);
    const nodeline::size<double> view{1600.0, 1000.0};
    std::string error;
    const auto picture =
        nodeline::cairo::MakePicture(nodeline::cairo::PictureFormat::kPng, view, 1.0, &error);
    if (picture == nullptr) {
        std::cerr << error << '\n';
        return false;
    }
    Time("everything drawn", [&] {
        picture->Draw([&](IPainter& painter) { DrawGraph(program.graph, &painter, 1.0); });
    });
    // The first query after a change looks at everything, and the second one makes an index.
    for (const char* time : {"first", "second", "third"}) {
        Time("what is in sight, for the " + std::string(time) + " time", [&] {
            picture->Draw([&](IPainter& painter) {
                DrawGraphIn(program.graph, {0.0, 0.0, view.cx, view.cy}, &painter, 1.0);
            });
        });
    }
    return true;
}

}  // namespace

int main() {
    // The first text has the fonts loaded, which is not what is to be timed here.
    nodeline::cairo::MeasuringPainter measure;
    static_cast<void>(measure.GetTextSize("function"));

    CompareCaptions(measure);
    CompareBuilding(measure);
    CompareHiding(measure);
    Program program = MakeFull(MakeHandler(measure));
    program.graph->RecalculateLayout(&measure);
    CompareChanges(program, measure);
    return ComparePainting(program) ? 0 : 1;
}
