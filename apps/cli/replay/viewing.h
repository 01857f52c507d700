// How a replay looks at its graph: through a viewer in a headless window, and an overview in
// another one.
#pragma once

#include <apps/cli/replay/script_graph.h>
#include <backends/headless/headless_window.h>
#include <nodeline/viewer/graph_viewer.h>
#include <viewkit/control.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace nodeline::replay {

// Whatever needs a window that has not been opened is a `ScriptFault`.
class Viewing {
public:
    // Paints are printed to the end of `printed`. Both outlive the viewing.
    Viewing(ScriptGraph& script, std::string& printed);
    ~Viewing();
    Viewing(const Viewing&) = delete;
    Viewing& operator=(const Viewing&) = delete;

    // Sets the default handlers of the graph: "port", "simple", "default" or "measure". Those that
    // measure captions do it by the painter of the window, once there is one.
    void SetHandlers(std::string_view kind);

    // Each can be opened once, the window first. Both end with a paint.
    void OpenWindow(nodeline::size<int> extent);
    void OpenOverview(nodeline::size<int> extent);
    void ResizeWindow(nodeline::size<int> extent);

    [[nodiscard]] viewkit::CControl& GetWindow();
    [[nodiscard]] viewkit::CControl& GetOverview();
    [[nodiscard]] CGraphViewer& GetViewer();

    // Paints what is pending in the window, then in that of the overview.
    void Paint();
    // Whether paints are printed, as calls of their painter.
    void Trace(bool on);
    // Draws what the window shows, with the measures of its painter, into a file. Its ending tells
    // the format.
    void SavePicture(const std::string& path);

private:
    [[nodiscard]] std::unique_ptr<headless::HeadlessWindow> make_window(nodeline::size<int> extent);
    template <class Handler>
    void use_handler();

    ScriptGraph& script_;
    std::string& printed_;
    bool is_traced_ = false;
    // Measures until there is a window.
    headless::RecordingPainter measuring_painter_;
    // Gives a painter to the handler that has been chosen.
    std::function<void(paintcore::IPainter*)> set_painter_;
    std::unique_ptr<headless::HeadlessWindow> window_;
    CGraphViewer* viewer_ = nullptr;                      // in the window
    std::unique_ptr<headless::HeadlessWindow> overview_;  // dies first, as it follows the viewer
};

}  // namespace nodeline::replay
