#pragma once

#include <QByteArray>
#include <QString>

namespace brindlecam::fuzz {

/// Lets the event loop do all that there is to do now.
void settle();

/// Whoever speaks to a running copy, with the bare system calls: nothing happens behind the
/// target's back. Never waits.
class Asker final {
public:
    /// Connects at once; somebody must be listening there.
    explicit Asker(const QString& path);
    ~Asker() { leave(); }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    /// Sends the bytes; answers with those that somebody took.
    QByteArray send(const QByteArray& bytes) const;
    void leave();

    /// All that has come so far.
    [[nodiscard]] const QByteArray& heard() const;
    [[nodiscard]] bool isHungUpOn() const;

private:
    void listen() const;

    int m_socket;
    mutable QByteArray m_heard;
    mutable bool m_hungUpOn = false;
};

} // namespace brindlecam::fuzz
