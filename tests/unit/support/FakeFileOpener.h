#pragma once

#include "platform/FileOpener.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QUrl>

#include <utility>

namespace brindlecam::test {

/// Notes what it should have opened, and answers what it is told to.
class FakeFileOpener final : public FileOpener {
public:
    QStringList opened; ///< folders
    QStringList files;
    QStringList pages;
    QStringList revealed;
    QStringList previewed;
    int previewsEnded = 0;
    bool succeeds = true;
    bool previews = false;    ///< whether the desktop has a way to show files large
    bool answersLate = false; ///< only by answerPreview()

    void openFolder(const QString& path, QObject* context, Done done) override
    {
        opened << path;
        answer(context, std::move(done), succeeds);
    }
    void openFile(const QString& path, QObject* context, Done done) override
    {
        files << path;
        answer(context, std::move(done), succeeds);
    }
    void openPage(const QUrl& page, QObject* context, Done done) override
    {
        pages << page.toString();
        answer(context, std::move(done), succeeds);
    }
    void reveal(const QString& path, QObject* context, Done done) override
    {
        revealed << path;
        answer(context, std::move(done), succeeds);
    }
    void preview(const QString& path, QObject* context, Done done) override
    {
        previewed << path;
        m_preview = [context = QPointer<QObject>(context), done](bool shown) {
            if (context)
                answer(context, done, shown);
        };
        if (!answersLate)
            answerPreview();
    }
    /// The desktop says whether it shows what it was asked for.
    void answerPreview() const { m_preview(previews); }
    /// The user has closed it.
    void previewGoes() const { m_preview(false); }
    void endPreview() override { ++previewsEnded; }

private:
    static void answer(QObject* context, Done done, bool outcome)
    {
        QMetaObject::invokeMethod(
            context, [done = std::move(done), outcome] { done(outcome); }, Qt::QueuedConnection);
    }

    Done m_preview;
};

} // namespace brindlecam::test
