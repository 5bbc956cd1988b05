#pragma once

#include "base/Listeners.h"
#include "platform/Compositing.h"

#include <QColor>

#include <functional>
#include <utility>

namespace brindlecam::test {

/// Blends windows or does not, as a test says.
class FakeCompositing final : public Compositing {
public:
    bool on = true;             ///< what blends() answers
    QColor beneath = Qt::white; ///< what backdrop() is filled with

    [[nodiscard]] bool blends() const override { return on; }
    void whenChanged(QObject* context, std::function<void()> changed) override
    {
        m_listeners.add(context, std::move(changed));
    }
    [[nodiscard]] QImage backdrop(const QRect& native) override
    {
        QImage image(native.size(), QImage::Format_RGB32);
        image.fill(beneath);
        return image;
    }

    void change(bool blending)
    {
        on = blending;
        m_listeners.tell();
    }

private:
    Listeners m_listeners;
};

} // namespace brindlecam::test
