#include "settings/ShortcutRecorderAccess.h"

#include "settings/ShortcutRecorder.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace brindlecam::ShortcutRecorderAccess {

namespace {

class AccessibleRecorder final : public QAccessibleWidget {
public:
    explicit AccessibleRecorder(ShortcutRecorder& recorder)
        : QAccessibleWidget(&recorder, QAccessible::Button)
        , m_recorder(recorder)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? m_recorder.shown() : QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override
    {
        if (name == pressAction())
            m_recorder.startRecording();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    ShortcutRecorder& m_recorder;
};

QAccessibleInterface* made(const QString&, QObject* object)
{
    auto* recorder = qobject_cast<ShortcutRecorder*>(object);
    return recorder ? new AccessibleRecorder(*recorder) : nullptr;
}

} // namespace

void install()
{
    QAccessible::installFactory(made);
}

} // namespace brindlecam::ShortcutRecorderAccess
