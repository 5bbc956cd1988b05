#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

namespace brindlecam {

/// Those who want to hear of one event, told in the order they came. A listener stays until its
/// context is gone. Listening, telling and ending are allowed while one is being told. One thread.
class Listeners final {
public:
    using Heard = std::function<void()>;

    /// `context` must not be null.
    void add(QObject* context, Heard heard);
    /// Tells everybody who was listening when this began and still is.
    void tell();
    [[nodiscard]] bool any() const;

private:
    struct Listener {
        QPointer<QObject> context;
        Heard heard;
    };

    std::vector<Listener> m_all;
};

} // namespace brindlecam
