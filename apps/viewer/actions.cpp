#include <apps/viewer/actions.h>

#include <QActionGroup>
#include <QCoreApplication>
#include <QKeySequence>
#include <QWidget>
#include <initializer_list>

namespace nodeline::app {

namespace {

struct Words {
    Command command;
    const char* text;
    const char* keys;
    const char* tip;
    bool is_checkable = false;
};

// clang-format off
constexpr Words kWords[] = {
    {Command::kOpen, "&Open…", "Ctrl+O", "Open a graph file"},
    {Command::kReload, "&Reload", "F5", "Read the file again; what remains of the graph stays in its place"},
    {Command::kExportAll, "&Export Everything…", "Ctrl+E", "Write the whole graph as SVG, PDF or PNG"},
    {Command::kExportVisible, "Export &Visible Part…", "Ctrl+Shift+E", "Write what is in view as SVG, PDF or PNG"},
    {Command::kCopyPicture, "&Copy Picture", "Ctrl+Shift+C", "Copy what is in view to the clipboard"},
    {Command::kQuit, "&Quit", "Ctrl+Q", "Close the window"},
    {Command::kUndo, "&Undo", "Ctrl+Z", "Take the last change back"},
    {Command::kRedo, "&Redo", "Ctrl+Shift+Z", "Make the change again that was taken back last"},
    {Command::kFind, "&Find…", "Ctrl+F", "Find nodes by their captions"},
    {Command::kCopyCaption, "Copy Captio&n", "Ctrl+C", "Copy the captions of the selected nodes"},
    {Command::kClearSelection, "Clear &Selection", "Escape", "Select no node"},
    {Command::kFoldParents, "Fold &Parents", "[", "Hide the nodes from which edges come"},
    {Command::kUnfoldParents, "Unfold P&arents", "Shift+[", "Show the nodes from which edges come"},
    {Command::kFoldChildren, "Fold &Children", "]", "Hide the nodes to which edges go"},
    {Command::kUnfoldChildren, "Unfold Ch&ildren", "Shift+]", "Show the nodes to which edges go"},
    {Command::kHide, "&Hide", "Delete", "Hide the selected nodes"},
    {Command::kShowOnly, "Show &Only This and Neighbours", "O", "Hide everything else"},
    {Command::kShowAll, "&Show All", "Ctrl+Shift+A", "Show every node"},
    {Command::kMark, "&Mark", "K", "Mark the selected nodes, or take their marks away"},
    {Command::kCentre, "C&entre", "C", "Move the selected node to the middle of the view"},
    {Command::kFit, "&Fit to Window", "Ctrl+0", "Show all of the graph"},
    {Command::kActualSize, "&Actual Size", "Ctrl+1", "Show the graph at 100 %"},
    {Command::kZoomIn, "Zoom &In", "Ctrl++", "Show less, and larger"},
    {Command::kZoomOut, "Zoom &Out", "Ctrl+-", "Show more, and smaller"},
    {Command::kPan, "&Pan", "P", "Dragging moves the view", true},
    {Command::kZoomArea, "&Zoom to Area", "Z", "Dragging draws a rectangle, which then fills the window", true},
    {Command::kSelectArea, "&Select Area", "S", "Dragging draws a rectangle that selects the nodes it touches; with Shift it adds them", true},
    {Command::kMoveNodes, "&Move Nodes", "M", "Dragging a node moves it instead of the view", true},
    {Command::kOverview, "O&verview", "F9", "Show all of the graph in small", true},
    {Command::kGlide, "&Glide", "Ctrl+Shift+G", "Let what a change moves glide to its new place", true},
    {Command::kSystemColors, "Colours of the Deskto&p", "Ctrl+Alt+0", "Light or dark as the desktop is", true},
    {Command::kLightColors, "&Light", "Ctrl+Alt+1", "Dark on light", true},
    {Command::kDarkColors, "&Dark", "Ctrl+Alt+2", "Light on dark", true},
    {Command::kHelp, "&How to Use", "F1", "What the pointer and the keys do"},
    {Command::kAbout, "&About", "Shift+F1", "Which program this is"},
};
// clang-format on

QString Translated(const char* text) { return QCoreApplication::translate("Actions", text); }

}  // namespace

Actions::Actions(QWidget* window) {
    for (const Words& words : kWords) {
        auto* const action = new QAction(Translated(words.text), window);
        const QKeySequence keys(QString::fromLatin1(words.keys));
        action->setShortcut(keys);
        action->setToolTip(Translated(words.tip) +
                           QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText)));
        action->setStatusTip(Translated(words.tip));
        action->setCheckable(words.is_checkable);
        window->addAction(action);
        actions_[static_cast<std::size_t>(words.command)] = action;
    }
    const auto group = [&](std::initializer_list<Command> commands) {
        auto* const made = new QActionGroup(window);
        for (const Command command : commands) made->addAction((*this)[command]);
    };
    group({Command::kPan, Command::kZoomArea, Command::kSelectArea});
    group({Command::kSystemColors, Command::kLightColors, Command::kDarkColors});
}

}  // namespace nodeline::app
