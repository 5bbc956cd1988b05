#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QMenu>
#include <QWidget>

namespace {

/// A window with a context menu. Each entry that is carried out adds a byte to a file.
class MenuWindow final : public QWidget {
public:
    explicit MenuWindow(QString log)
        : m_log(std::move(log))
    {
        addEntry(m_menu, QStringLiteral("uno"));
        addEntry(m_menu, QStringLiteral("dos"));
        m_more.setTitle(QStringLiteral("más"));
        addEntry(m_more, QStringLiteral("tres"));
        m_menu.addMenu(&m_more);
        setGeometry(100, 100, 500, 400);
    }

protected:
    void contextMenuEvent(QContextMenuEvent* event) override { m_menu.popup(event->globalPos()); }

private:
    void addEntry(QMenu& menu, const QString& text)
    {
        connect(menu.addAction(text), &QAction::triggered, this, [this] {
            QFile log(m_log);
            if (log.open(QIODevice::Append))
                log.write("x");
        });
    }

    QString m_log;
    QMenu m_menu{this};
    QMenu m_more{this};
};

} // namespace

/// desktop_qt_menu FILE
int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    MenuWindow window(QApplication::arguments().value(1));
    window.show();
    return QApplication::exec();
}
