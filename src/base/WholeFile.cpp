#include "base/WholeFile.h"

#include <QSaveFile>

namespace brindlecam {

bool writeWhole(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    // Where the disk fills up in the middle, write() only says how far it came: no error is set
    // that commit() would mind. Without commit() nothing changes.
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace brindlecam
