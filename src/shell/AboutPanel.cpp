#include "shell/AboutPanel.h"

#include "base/Text.h"
#include "look/InterfaceFont.h"
#include "look/Symbols.h"
#include "preferences/Config.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace brindlecam {

namespace {

// Points.
constexpr int kIconSize = 64;
constexpr int kNameSize = 15;
constexpr int kSmallSize = 11;
constexpr int kMargin = 24;
constexpr int kSpacing = 8;

QLabel* centred(const QString& words, const QFont& font)
{
    auto* label = new QLabel(words);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

AboutPanel::AboutPanel()
{
    setWindowTitle(text("Acerca de Brindlecam"));

    auto* icon = new QLabel;
    icon->setPixmap(Symbols::icon(QStringLiteral("leaf.fill"), Config::leafGreen)
                        .pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    icon->setAlignment(Qt::AlignCenter);
    icon->setAccessibleName(QStringLiteral("Brindlecam"));

    QLabel* credits = centred(text("Capturas de pantalla rápidas con anotaciones.\n"
                                   "Hecho con 💚 por Halvick."),
                              InterfaceFont::regular(kSmallSize));
    credits->setForegroundRole(QPalette::PlaceholderText); // the system's secondary text colour

    auto* buttons = new QDialogButtonBox;
    QPushButton* close = buttons->addButton(text("Aceptar"), QDialogButtonBox::AcceptRole);
    close->setDefault(true);
    buttons->setCenterButtons(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(icon);
    layout->addWidget(centred(QStringLiteral("Brindlecam"), InterfaceFont::bold(kNameSize)));
    layout->addWidget(centred(text("Versión %1").arg(QCoreApplication::applicationVersion()),
                              InterfaceFont::regular(kSmallSize)));
    layout->addWidget(credits);
    layout->addSpacing(kSpacing);
    layout->addWidget(buttons);
}

} // namespace brindlecam
