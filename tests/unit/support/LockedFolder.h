#pragma once

#include <QFile>
#include <QString>

#include <unistd.h>

namespace brindlecam::test {

/// While it lives, nothing can be made or deleted in the folder, or it can't even be listed; not by
/// the superuser's tests either, which become another user meanwhile.
class LockedFolder final {
public:
    enum class Lock { readOnly, unreadable };

    LockedFolder(const QString& folder, const QString& outermost, Lock lock = Lock::readOnly)
        : m_folder(folder)
    {
        QFile::setPermissions(outermost, kOpen);
        QFile::setPermissions(m_folder, lock == Lock::readOnly ? kReadOnly : QFile::Permissions());
        if (geteuid() == 0)
            m_changed = seteuid(kNobody) == 0;
    }
    ~LockedFolder()
    {
        if (m_changed && seteuid(0) != 0)
            qFatal("can't become the superuser again");
        QFile::setPermissions(m_folder, kOpen);
    }
    Q_DISABLE_COPY_MOVE(LockedFolder)

private:
    static constexpr uid_t kNobody = 65534;
    static constexpr QFile::Permissions kReadOnly = QFile::ReadOwner | QFile::ExeOwner |
                                                    QFile::ReadGroup | QFile::ExeGroup |
                                                    QFile::ReadOther | QFile::ExeOther;
    static constexpr QFile::Permissions kOpen = kReadOnly | QFile::WriteOwner;

    QString m_folder;
    bool m_changed = false;
};

} // namespace brindlecam::test
