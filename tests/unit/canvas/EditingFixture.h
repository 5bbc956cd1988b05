#pragma once

#include "CanvasFixture.h"
#include "canvas/TextField.h"

#include <QFile>
#include <QPointingDevice>
#include <QWheelEvent>

namespace brindlecam::test {

/// A canvas with the left part of its picture selected.
struct EditingFixture : CanvasFixture {
    explicit EditingFixture(QSizeF size = kPixels)
        : CanvasFixture(size)
    {
        const QSize whole = size.toSize();
        drag({10, 10}, {whole.width() / 2 + 60, whole.height() - 20});
        autoCopied.clear();
    }

    static QString pointerName()
    {
        return QStringLiteral("Mover la selección o una anotación (⌫ la borra)");
    }

    void draw(Tool tool, QPoint from, QPoint to)
    {
        if (canvas->editor().tool() != tool)
            choose(tool);
        drag(from, to);
    }
    void turnWheel(int angle,
                   const QPointingDevice* device = QPointingDevice::primaryPointingDevice())
    {
        const bool precise = device->type() == QInputDevice::DeviceType::TouchPad;
        QWheelEvent event(QPointF(100, 100), canvas->mapToGlobal(QPointF(100, 100)),
                          precise ? QPoint(0, angle) : QPoint(), QPoint(0, angle), {}, {},
                          Qt::NoScrollPhase, false, Qt::MouseEventNotSynthesized, device);
        QCoreApplication::sendEvent(canvas.get(), &event);
    }
    [[nodiscard]] TextField* field() const
    {
        // One that has ended lives on, hidden, until the loop comes round.
        const auto fields = canvas->findChildren<TextField*>();
        const auto found =
            std::ranges::find_if(fields, [](const TextField* each) { return !each->isHidden(); });
        return found == fields.end() ? nullptr : *found;
    }
    /// What the message over the selection says; empty without one.
    [[nodiscard]] QString message() const { return canvas->message(); }
    [[nodiscard]] QByteArray stored() const
    {
        QFile file(folder.filePath(QStringLiteral("settings.json")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void beginText(QPoint at)
    {
        if (canvas->editor().tool() != Tool::text)
            choose(Tool::text);
        click(at);
    }
    void type(const QString& letters)
    {
        beginText({60, 60});
        QTest::keyClicks(field(), letters);
    }
};

} // namespace brindlecam::test
