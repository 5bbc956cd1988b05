#pragma once

#include "platform/x11/clipboard/X11Pasteboard.h"
#include "support/TestCase.h"
#include "x11/ServerForMyself.h"

#include <QThreadPool>

#include <memory>
#include <optional>

namespace brindlecam::test {

/// A test that copies through the port and waits for its answers.
class PasteboardTest : public TestCase {
    Q_OBJECT

protected:
    std::unique_ptr<X11Pasteboard> m_pasteboard = makePasteboard();

    [[nodiscard]] static std::unique_ptr<X11Pasteboard> makePasteboard()
    {
        return std::make_unique<X11Pasteboard>([](std::function<void()> work) {
            QThreadPool::globalInstance()->start(std::move(work));
        });
    }
    /// A TIFF that can't be made.
    [[nodiscard]] static QByteArray nothing() { return {}; }

    /// None when no answer came.
    [[nodiscard]] std::optional<ClipboardFate> fateOf(ClipboardContent content)
    {
        std::optional<ClipboardFate> fate;
        m_pasteboard->set(std::move(content), this, [&fate](ClipboardFate told) { fate = told; });
        (void)QTest::qWaitFor([&fate] { return fate.has_value(); });
        return fate;
    }
    [[nodiscard]] bool setPicture(const QByteArray& png, std::function<QByteArray()> makeTiff)
    {
        return fateOf(ClipboardContent::picture(png, std::move(makeTiff))) == ClipboardFate::taken;
    }
    [[nodiscard]] bool setConcealed(const QByteArray& png)
    {
        auto content = ClipboardContent::picture(png, [] { return QByteArray("tiff"); });
        content.concealed = true;
        return fateOf(std::move(content)) == ClipboardFate::taken;
    }
    [[nodiscard]] bool setText(const QString& text)
    {
        return fateOf(ClipboardContent::text(text)) == ClipboardFate::taken;
    }
    /// Whether what is set while something else is on its way comes in its place.
    [[nodiscard]] bool overtakes(const ClipboardContent& newer, const ClipboardContent& older)
    {
        // The older one may still win: its request may be answered before the newer is heard of.
        return QTest::qWaitFor([&] {
            return fatesOf(older, newer) ==
                   QList<ClipboardFate>({ClipboardFate::overtaken, ClipboardFate::taken});
        });
    }
    [[nodiscard]] bool handOver()
    {
        bool done = false;
        m_pasteboard->handOver(this, [&done] { done = true; });
        return QTest::qWaitFor([&done] { return done; });
    }

private:
    /// What becomes of two that are set in one moment.
    [[nodiscard]] QList<ClipboardFate> fatesOf(const ClipboardContent& first,
                                               const ClipboardContent& second)
    {
        const auto fates = std::make_shared<QList<ClipboardFate>>();
        const auto remember = [fates](ClipboardFate fate) { *fates << fate; };
        {
            const ServerForMyself nobodyElse; // so that the first one can't be taken before
            m_pasteboard->set(first, this, remember);
            m_pasteboard->set(second, this, remember);
        }
        (void)QTest::qWaitFor([&] { return fates->size() == 2; });
        return *fates;
    }
};

} // namespace brindlecam::test
