#include "canvas/CanvasScene.h"

#include "canvas/CanvasModel.h"

namespace brindlecam {

namespace {

// While the pointer looks for an edge: before there is a selection and while its edges move.
bool wantsLoupe(const Selection& selection)
{
    const Drag& drag = selection.drag();
    if (std::holds_alternative<drag::None>(drag))
        return selection.isEmpty();
    return std::holds_alternative<drag::Selecting>(drag) ||
           std::holds_alternative<drag::Resizing>(drag);
}

} // namespace

CanvasScene CanvasScene::of(const CanvasModel& model, const std::optional<QPointF>& loupePointer)
{
    const Selection& selection = model.selection();
    const AnnotationEditor& editor = model.editor();
    const bool choosing = selection.isEmpty() && !selection.isDragging();
    CanvasScene scene;
    scene.hole = selection.hole();
    scene.selection = selection.rect();
    scene.handles = editor.current() ? Handles::hidden : Handles::shown;
    if (choosing)
        scene.outlinedWindow = selection.hoveredWindow();
    if (editor.selectedAnnotation() && !editor.tool())
        scene.outlinedMark = editor.selectedAnnotation()->bounds();
    if (wantsLoupe(selection))
        scene.loupePointer = loupePointer;
    scene.hint = choosing;
    return scene;
}

} // namespace brindlecam
