#pragma once

#include "platform/Pasteboard.h"

#include <QImage>

#include <optional>
#include <utility>

namespace brindlecam::test {

/// A clipboard that counts what is put on it.
class FakePasteboard final : public Pasteboard {
public:
    int changes = 0;
    std::optional<QByteArray> png;
    std::function<QByteArray()> makeTiff;
    std::optional<QString> plainText;

    bool setPicture(const QByteArray& bytes, std::function<QByteArray()> tiff) override
    {
        ++changes;
        png = bytes;
        makeTiff = std::move(tiff);
        plainText.reset();
        return true;
    }
    bool setText(const QString& text) override
    {
        ++changes;
        plainText = text;
        png.reset();
        return true;
    }
    void handOver() override {}

    [[nodiscard]] QImage picture() const
    {
        return png ? QImage::fromData(*png, "PNG").convertToFormat(QImage::Format_RGB32) : QImage();
    }
};

} // namespace brindlecam::test
