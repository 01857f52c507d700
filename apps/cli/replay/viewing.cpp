#include <apps/cli/replay/viewing.h>

#include <apps/cli/replay/words.h>
#include <nodeline/viewer/overview.h>

#ifdef NODELINE_WITH_CAIRO
#include <backends/cairo/picture.h>
#endif

namespace nodeline::replay {

using headless::HeadlessWindow;
using headless::RecordingPainter;
using viewkit::CControl;

namespace {

HeadlessWindow& window_of(const std::unique_ptr<HeadlessWindow>& window, const char* name) {
    if (window == nullptr) throw ScriptFault(std::string("there is no ") + name);
    return *window;
}

}  // namespace

Viewing::Viewing(ScriptGraph& script, std::string& printed) : script_(script), printed_(printed) {
    measuring_painter_.SetRecording(false);
}

Viewing::~Viewing() = default;

template <class Handler>
void Viewing::use_handler() {
    const graph_ptr2<Handler> handler(new Handler, true);
    set_painter_ = [handler](paintcore::IPainter* painter) { handler->SetIPainter(painter); };
    set_painter_(window_ != nullptr ? window_->GetPainter() : &measuring_painter_);
    script_.graph()->SetDefaultNodeHandler(handler);
}

void Viewing::SetHandlers(std::string_view kind) {
    if (kind == "port") {
        use_handler<PortNodeHandler>();
    } else if (kind == "simple") {
        use_handler<SimpleNodeHandler>();
    } else if (kind == "default") {
        script_.graph()->SetDefaultNodeHandler(GetDefaultNodeHandler());
    } else if (kind == "measure") {
        script_.UseMeasuringHandlers();
        return;
    } else {
        throw ScriptFault("there is no handler " + Quoted(kind));
    }
    script_.graph()->SetDefaultEdgeHandler(GetDefaultEdgeHandler());
}

std::unique_ptr<HeadlessWindow> Viewing::make_window(nodeline::size<int> extent) {
    auto window = std::make_unique<HeadlessWindow>(extent);
    window->GetRecorder().SetRecording(is_traced_);
    window->SetPaintListener([this](const std::vector<std::string>& lines) {
        if (!is_traced_) return;
        printed_ += "paint\n";
        for (const std::string& line : lines) printed_ += line + '\n';
        printed_ += "painted\n";
    });
    return window;
}

void Viewing::OpenWindow(nodeline::size<int> extent) {
    if (window_ != nullptr) throw ScriptFault("there is a window already");
    window_ = make_window(extent);
    if (set_painter_) set_painter_(window_->GetPainter());
    viewer_ = new CGraphViewer(window_->GetRoot(), extent, viewkit::Alignment::Client);
    viewer_->ScrollbarsEnable(false);
    viewer_->SetGraph(script_.graph());
    Paint();
}

void Viewing::OpenOverview(nodeline::size<int> extent) {
    CGraphViewer& viewer = GetViewer();
    if (overview_ != nullptr) throw ScriptFault("there is an overview already");
    overview_ = make_window(extent);
    new COverviewContent(overview_->GetRoot(), &viewer);
    Paint();
}

void Viewing::ResizeWindow(nodeline::size<int> extent) {
    window_of(window_, "window").Resize(extent);
    Paint();
}

CControl& Viewing::GetWindow() { return window_of(window_, "window").GetControl(); }

CControl& Viewing::GetOverview() { return window_of(overview_, "overview").GetControl(); }

CGraphViewer& Viewing::GetViewer() {
    (void)GetWindow();
    return *viewer_;
}

void Viewing::Paint() {
    if (window_ != nullptr) window_->PaintPending();
    if (overview_ != nullptr) overview_->PaintPending();
}

void Viewing::Trace(bool on) {
    is_traced_ = on;
    for (HeadlessWindow* window : {window_.get(), overview_.get()}) {
        if (window == nullptr) continue;
        window->GetRecorder().SetRecording(on);
        window->GetRecorder().TakeLines();
    }
}

#ifdef NODELINE_WITH_CAIRO

void Viewing::SavePicture(const std::string& path) {
    CControl& control = GetWindow();
    const std::optional<cairo::PictureFormat> format = cairo::GetPictureFormat(path);
    if (!format) throw ScriptFault(Quoted(path) + " ends in none of .svg, .pdf and .png");
    const rectangle<int> r = window_->GetRect();
    std::string error;
    const std::unique_ptr<cairo::Picture> picture = cairo::MakePicture(
        *format, {static_cast<double>(r.right), static_cast<double>(r.bottom)}, 1.0, &error);
    if (picture == nullptr) throw ScriptFault(Quoted(path) + ": " + error);
    RecordingPainter painter(&picture->GetPainter());
    painter.SetRecording(false);
    control.DrawPicture(&painter);
    if (!picture->Save(path, &error)) throw ScriptFault(error);
}

#else

void Viewing::SavePicture(const std::string&) {
    (void)GetWindow();
    throw ScriptFault("pictures need the Cairo backend, which is not in this build");
}

#endif

}  // namespace nodeline::replay
