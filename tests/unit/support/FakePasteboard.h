#pragma once

#include "platform/Pasteboard.h"

#include <QImage>
#include <QMetaObject>
#include <QString>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace brindlecam::test {

/// A clipboard that counts what is put on it, and refuses when told to.
class FakePasteboard final : public Pasteboard {
public:
    ClipboardFate answers = ClipboardFate::taken; ///< what becomes of everything from now on
    int changes = 0;
    int handOvers = 0;
    std::function<void()> onHandOver; ///< runs inside handOver()
    int revealed = 0;                 ///< how often something concealed was
    bool concealed = false;           ///< what is there now
    std::optional<QByteArray> png;
    std::function<QByteArray()> makeTiff;
    std::optional<QString> plainText;
    std::vector<ClipboardContent::Format> formats; ///< all that is there now, as it was offered

    void set(ClipboardContent content, QObject* context, Answer answer) override
    {
        if (answers == ClipboardFate::taken)
            show(content);
        QMetaObject::invokeMethod(
            context, [answer = std::move(answer), fate = answers] { answer(fate); },
            Qt::QueuedConnection);
    }
    void reveal() override
    {
        if (std::exchange(concealed, false))
            ++revealed;
    }
    void handOver(QObject* context, std::function<void()> done) override
    {
        ++handOvers;
        if (onHandOver)
            onHandOver();
        QMetaObject::invokeMethod(context, std::move(done), Qt::QueuedConnection);
    }

    [[nodiscard]] QImage picture() const
    {
        return png ? QImage::fromData(*png, "PNG").convertToFormat(QImage::Format_RGB32) : QImage();
    }

private:
    void show(const ClipboardContent& content)
    {
        ++changes;
        concealed = content.concealed;
        png.reset();
        makeTiff = nullptr;
        plainText.reset();
        formats = content.formats;
        for (const auto& format : content.formats) {
            if (format.mimeType == "image/png")
                png = format.bytes;
            else if (format.mimeType == "image/tiff")
                makeTiff = format.make;
            else if (format.mimeType == "text/plain;charset=utf-8")
                plainText = QString::fromUtf8(format.bytes);
        }
    }
};

} // namespace brindlecam::test
