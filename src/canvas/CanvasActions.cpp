#include "canvas/CanvasActions.h"

#include "base/Call.h"
#include "base/Text.h"
#include "canvas/CanvasModel.h"
#include "canvas/Hud.h"

#include <chrono>

namespace brindlecam {

namespace {

constexpr std::chrono::milliseconds kReasonShown{2500};
// The least selections of long captures, in points.
constexpr QSizeF kLeastScroll(80, 120);
constexpr QSizeF kLeastGif(40, 40);

} // namespace

CanvasActions::CanvasActions(CanvasModel& model, Hud& hud, TextRecognizer& recognizer,
                             QObject& canvas)
    : m_model(model)
    , m_hud(hud)
    , m_reading(recognizer, canvas, hud)
{
    m_reading.onText = [this](const QString& read) { finish(outcome::Text{read}); };
}

void CanvasActions::perform(Toolbar::Action action)
{
    switch (action) {
    case Toolbar::Action::text:
        return recognizeText();
    case Toolbar::Action::pin:
        return pin();
    case Toolbar::Action::scroll:
        return scrollCapture();
    case Toolbar::Action::gif:
        return recordGif();
    case Toolbar::Action::copy:
        return copy();
    case Toolbar::Action::save:
        return saveDocument();
    case Toolbar::Action::close:
        return cancel();
    }
}

std::optional<Rendered> CanvasActions::render()
{
    call(onBeforePicture);
    return m_model.render();
}

void CanvasActions::finish(const Outcome& outcome)
{
    call(onFinish, outcome);
}

void CanvasActions::recognizeText()
{
    call(onBeforePicture);
    if (const QImage picture = m_model.frozenSelection(); !picture.isNull())
        m_reading.read(picture);
}

void CanvasActions::copy()
{
    if (const auto picture = render())
        finish(outcome::Copy{*picture});
}

void CanvasActions::saveDocument()
{
    if (const auto picture = render())
        finish(outcome::Save{*picture});
}

void CanvasActions::pin()
{
    if (const auto picture = render())
        finish(outcome::Pin{*picture, m_model.nativeSelection()});
}

bool CanvasActions::hasRoomFor(QSizeF least, const QString& otherwise)
{
    const QSizeF size = m_model.settledSelection().size();
    if (size.width() >= least.width() && size.height() >= least.height())
        return true;
    if (!m_model.selection().isEmpty())
        m_hud.show(otherwise, Hud::Stay::timed, kReasonShown);
    return false;
}

void CanvasActions::scrollCapture()
{
    if (hasRoomFor(kLeastScroll,
                   text("Selecciona un área más grande para la captura con desplazamiento")))
        finish(outcome::Scroll{m_model.nativeSelection()});
}

void CanvasActions::recordGif()
{
    if (hasRoomFor(kLeastGif, text("Selecciona un área más grande para grabar")))
        finish(outcome::Gif{m_model.nativeSelection()});
}

void CanvasActions::cancel()
{
    finish(outcome::Cancel{});
}

} // namespace brindlecam
