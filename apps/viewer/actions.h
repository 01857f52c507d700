// Actions: everything that a person can have done, with its words and keys.
#pragma once

#include <QAction>
#include <array>
#include <cstddef>

class QWidget;

namespace nodeline::app {

enum class Command {
    kOpen,
    kReload,
    kExportAll,
    kExportVisible,
    kCopyPicture,
    kQuit,
    kUndo,
    kRedo,
    kFind,
    kCopyCaption,
    kClearSelection,
    kFoldParents,
    kUnfoldParents,
    kFoldChildren,
    kUnfoldChildren,
    kHide,
    kShowOnly,
    kShowAll,
    kMark,
    kCentre,
    kFit,
    kActualSize,
    kZoomIn,
    kZoomOut,
    kPan,
    kZoomArea,
    kSelectArea,
    kMoveNodes,
    kOverview,
    kGlide,
    kSystemColors,
    kLightColors,
    kDarkColors,
    kHelp,
    kAbout,
    kCount
};

// The actions belong to the window that they are made for, where their shortcuts work.
class Actions {
public:
    explicit Actions(QWidget* window);

    [[nodiscard]] QAction* operator[](Command command) const {
        return actions_[static_cast<std::size_t>(command)];
    }

private:
    std::array<QAction*, static_cast<std::size_t>(Command::kCount)> actions_{};
};

}  // namespace nodeline::app
