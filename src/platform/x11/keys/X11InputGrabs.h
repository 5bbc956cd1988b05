#pragma once

#include "platform/InputGrabs.h"
#include "platform/x11/keys/ForeignGrabs.h"
#include "platform/x11/keys/GrabPatience.h"

#include <QPointer>
#include <QTimer>

#include <optional>

namespace brindlecam {

/// Other X clients' grabs. Main thread; a timer runs only while one is being ended or waited for.
class X11InputGrabs final : public InputGrabs {
public:
    X11InputGrabs();

    void clear(QObject* context, Done done) override;

private:
    struct Request {
        QPointer<QObject> context;
        Done done;
        x11::GrabPatience patience{};
    };

    void look();
    void finish(Answer answer);

    x11::ForeignGrabs m_grabs;
    std::optional<Request> m_request;
    QTimer m_nextLook;
};

} // namespace brindlecam
