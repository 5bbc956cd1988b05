#include <QApplication>
#include <QFile>
#include <QPropertyAnimation>
#include <QScrollBar>
#include <QTextBrowser>
#include <QWheelEvent>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int kNotch = 90;      // pixels
constexpr int kGlideTime = 200; // milliseconds
constexpr int kEighths = 120;   // of a degree, that a notch turns the wheel

/// A page that glides under the wheel, as those of browsers do.
class GlidingPage final : public QTextBrowser {
public:
    explicit GlidingPage(const QString& html)
    {
        setWindowFlag(Qt::FramelessWindowHint);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // as wide in a window of any height
        setHtml(html);
        m_glide.setDuration(kGlideTime);
        m_glide.setEasingCurve(QEasingCurve::OutCubic);
    }

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        QScrollBar& bar = *verticalScrollBar();
        const bool glides = m_glide.state() == QAbstractAnimation::Running;
        const int from = glides ? m_glide.endValue().toInt() : bar.value();
        const int target = from - event->angleDelta().y() * kNotch / kEighths;
        m_glide.stop();
        m_glide.setStartValue(bar.value());
        m_glide.setEndValue(std::clamp(target, bar.minimum(), bar.maximum()));
        m_glide.start();
        event->accept();
    }

private:
    QPropertyAnimation m_glide{verticalScrollBar(), "value"};
};

} // namespace

/// desktop_qt_page FILE LEFT TOP WIDTH HEIGHT: a window without a frame that shows a page of HTML.
int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QStringList words = QApplication::arguments();
    QFile file(words.value(1));
    if (words.size() != 6 || !file.open(QIODevice::ReadOnly)) {
        std::fputs("there is no page\n", stderr);
        return 1;
    }
    GlidingPage page(QString::fromUtf8(file.readAll()));
    page.setGeometry(words.at(2).toInt(), words.at(3).toInt(), words.at(4).toInt(),
                     words.at(5).toInt());
    page.show();
    return QApplication::exec();
}
