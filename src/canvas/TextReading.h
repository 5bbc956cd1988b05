#pragma once

#include "base/Result.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

class QObject;

namespace brindlecam {

class Hud;
class TextRecognizer;

/// Reads the text of a selection and says how it went. The recogniser works elsewhere; what it
/// answers once the canvas is gone is dropped. Main thread.
class TextReading final {
public:
    /// `canvas` is who asks; recogniser and message outlive this.
    TextReading(TextRecognizer& recognizer, QObject& canvas, Hud& hud);

    /// The lines that were read, joined by line feeds; at least one.
    std::function<void(const QString&)> onText;

    /// Reads a picture in its own pixels. Each call reports for itself.
    void read(const QImage& picture);

    /// How the latest reading of the process goes or went, for tests and logs: "iniciado, imagen
    /// 640×480", then "ok en 0.1s, …" or the error.
    [[nodiscard]] static const QString& test_lastOCRStatus();

private:
    void finish(const Result<QStringList>& lines, QSize size, std::chrono::milliseconds time);

    TextRecognizer& m_recognizer;
    QObject& m_canvas;
    Hud& m_hud;
};

} // namespace brindlecam
