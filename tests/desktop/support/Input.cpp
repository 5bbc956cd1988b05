#include "desktop/support/Input.h"

#include <QThread>

namespace brindlecam::desktop {

namespace {

constexpr unsigned long kBetweenClicks = 80; // milliseconds

} // namespace

void Input::chord(const QList<Qt::Key>& keys)
{
    for (const Qt::Key key : keys)
        press(key);
    for (auto key = keys.crbegin(); key != keys.crend(); ++key)
        release(*key);
}

void Input::type(std::string_view letters)
{
    for (const char letter : letters) {
        const bool isLetter = letter >= 'a' && letter <= 'z';
        tap(static_cast<Qt::Key>(isLetter ? letter - 'a' + 'A' : letter));
    }
}

void Input::click(QPoint pixel, Button button)
{
    moveTo(pixel);
    press(button);
    release(button);
}

void Input::doubleClick(QPoint pixel)
{
    click(pixel);
    QThread::msleep(kBetweenClicks);
    click(pixel);
}

void Input::drag(QPoint from, QPoint to, int steps)
{
    moveTo(from);
    press(Button::left);
    glide(from, to, steps);
    release(Button::left);
}

void Input::glideTo(QPoint to, int steps)
{
    glide(pointer(), to, steps);
}

void Input::glide(QPoint from, QPoint to, int steps)
{
    for (int step = 1; step <= steps; ++step)
        moveTo(from + (to - from) * step / steps);
}

} // namespace brindlecam::desktop
