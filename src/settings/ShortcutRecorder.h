#pragma once

#include "base/KeyCombo.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace brindlecam {

class HotKeys;

/// A field that shows a shortcut, and takes another from the keyboard once it is pressed. Records
/// only while it has the keyboard. Main thread.
class ShortcutRecorder final : public QWidget {
    Q_OBJECT

public:
    static constexpr QSize kSize{190, 26}; ///< points

    /// The keyboard outlives it. `name` is what the shortcut is for.
    ShortcutRecorder(const HotKeys& keys, KeyNaming naming, const QString& name,
                     QWidget* parent = nullptr);
    ~ShortcutRecorder() override;

    // Filled by whoever makes it.
    /// The user has chosen another shortcut, or removed it.
    std::function<void(const std::optional<KeyCombo>&)> onChange = [](const auto&) {};
    std::function<void()> onRecording = [] {}; ///< keys are to reach it from now on
    std::function<void()> onStopped = [] {};   ///< and no longer
    std::function<void()> onRefused;           ///< a press that can't be a shortcut: beeps

    [[nodiscard]] const std::optional<KeyCombo>& combo() const { return m_combo; }
    /// onChange is not called.
    void setCombo(const std::optional<KeyCombo>& combo);
    [[nodiscard]] bool recording() const { return m_recording; }
    /// As soon as it has the keyboard, which it asks for.
    void startRecording();
    void stopRecording();

    /// What it reads.
    [[nodiscard]] QString shown() const;

    [[nodiscard]] QSize sizeHint() const override { return kSize; }
    [[nodiscard]] QSize minimumSizeHint() const override { return kSize; }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void begin();
    void record(const QKeyEvent& event);
    void choose(const std::optional<KeyCombo>& combo);
    void tell();

    const HotKeys& m_keys;
    const KeyNaming m_naming;
    std::optional<KeyCombo> m_combo;
    bool m_recording = false;
    bool m_awaitsFocus = false; ///< and records then
};

} // namespace brindlecam
