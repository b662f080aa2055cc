#include "ui/AboutDialog.h"

#include "plugin/base/Names.h"
#include "plugin/base/Settings.h"
#include "ui/PanelDialog.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStringList>
#include <QSysInfo>
#include <QVBoxLayout>

#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

namespace vellum {

namespace {

constexpr int kWidth = 480;
constexpr int kTextHeight = 240;

QString title() {
    return QStringLiteral("%1 %2").arg(QLatin1String(kProductName), QLatin1String(kVersion));
}

} // namespace

QString aboutText() {
    const QString settingsFile = settingsPath();
    return QStringList {
        title(), QStringLiteral("2D drawing over the viewport, frame by frame."), QString(),
            QStringLiteral(
                "Built for Maya API %1 with Qt %2; running in Maya API %3 with Qt %4 on %5.")
                .arg(QString::number(MAYA_API_VERSION), QStringLiteral(QT_VERSION_STR),
                     QString::number(MGlobal::apiVersion()), QLatin1String(qVersion()),
                     QSysInfo::prettyProductName()),
            QStringLiteral("Settings: %1")
                .arg(settingsFile.isEmpty() ? QStringLiteral("(none)") : settingsFile),
            QString(), QStringLiteral("Licence: MIT. Copyright (c) 2026 The Vellum2 authors."),
            QStringLiteral("Libraries:"),
            QStringLiteral(
                "  Qt: GNU Lesser General Public License, version 3 (as Maya brings it)"),
            QStringLiteral("  zlib: zlib License"),
#if defined(Q_OS_LINUX)
            QStringLiteral("  libxcb: MIT License"),
#endif
    }
    .join(QLatin1Char('\n'));
}

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("About %1").arg(QLatin1String(kProductName)));
    removeContextHelpButton(*this);
    setMinimumWidth(MQtUtil::dpiScale(kWidth));

    auto* name = new QLabel(QStringLiteral("<b>%1</b>").arg(title()));
    auto* text = new QPlainTextEdit(aboutText());
    text->setReadOnly(true);
    text->setMinimumHeight(MQtUtil::dpiScale(kTextHeight));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* copy =
        buttons->addButton(QStringLiteral("Copy for a Report"), QDialogButtonBox::ActionRole);
    copy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    buttons->button(QDialogButtonBox::Close)->setFocus();
    connect(copy, &QPushButton::clicked, this, &AboutDialog::CopyToClipboard);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* column = new QVBoxLayout(this);
    column->addWidget(name);
    column->addWidget(text);
    column->addWidget(buttons);
}

void AboutDialog::CopyToClipboard() {
    QGuiApplication::clipboard()->setText(aboutText());
}

} // namespace vellum
