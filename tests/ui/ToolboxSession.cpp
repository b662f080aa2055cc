#include "ui/ToolboxSession.h"

#include "ui/ViewWidget.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QSettings>

#include <algorithm>

namespace vellum::test {

void Toolbox::SetUp() {
    PanelSession::SetUp();
    // Quick clicks on one button are as many clicks.
    QApplication::setDoubleClickInterval(1);
    ASSERT_TRUE(
        run(QStringLiteral("rvVellumUtil -brushTool; rvVellumUtil -brushOptions 20 90 100 0")));
    show();
}

void Toolbox::show() {
    box = open("-toolbox", "ToolboxDialog");
    ASSERT_TRUE(box);
    box->move(500, 60);
    support::settle();
    echoes.clear();
}

void Toolbox::reload(const char* preference, bool on) {
    ASSERT_TRUE(run(QStringLiteral("file -f -new; setToolTo selectSuperContext; file -f -new")));
    unloadPlugin();
    EXPECT_EQ(number(QStringLiteral("control -exists rvVlToolboxColorPickerBtn")), 0);
    {
        QSettings file(text(QStringLiteral("internalVar -userPrefDir")) +
                           QStringLiteral("/vellum2.ini"),
                       QSettings::IniFormat);
        file.setValue(QStringLiteral("preferences/") + QLatin1String(preference), on);
    }
    loadPlugin();
    show();
}

QLabel& Toolbox::button(const QString& toolTip) {
    for (QLabel* label : box->findChildren<QLabel*>()) {
        if (label->toolTip() == toolTip)
            return *label;
    }
    ADD_FAILURE() << "no button " << toolTip.toStdString();
    return *box->findChild<QLabel*>();
}

QStringList Toolbox::buttons() {
    QList<QLabel*> all;
    for (QLabel* label : box->findChildren<QLabel*>()) {
        if (label->parentWidget() == box && !label->toolTip().isEmpty())
            all.append(label);
    }
    std::sort(all.begin(), all.end(), [](const QLabel* a, const QLabel* b) {
        return std::pair(a->y(), a->x()) < std::pair(b->y(), b->x());
    });
    QStringList names;
    for (const QLabel* label : all)
        names.append(label->toolTip());
    return names;
}

QStringList Toolbox::lit() {
    const QColor active = box->palette().color(QPalette::Highlight);
    QStringList names;
    for (const QString& name : buttons()) {
        if (button(name).grab().toImage().pixelColor(1, 1) == active)
            names.append(name);
    }
    return names;
}

QDialog* Toolbox::popUp() {
    for (QDialog* dialog : box->findChildren<QDialog*>()) {
        if (dialog->windowType() == Qt::Popup && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

QMenu* Toolbox::menu() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

QString Toolbox::color() {
    QStringList parts;
    for (int i = 0; i < 3; ++i)
        parts.append(QString::number(number(
            QStringLiteral("int $vlC[] = `rvVellumUtil -q -dc`; int($vlI = $vlC[%1])").arg(i))));
    return parts.join(QLatin1Char(' '));
}

void Toolbox::dragInView(Qt::Key key) {
    hand.moveTo(view(), {200, 200});
    hand.key(key, true);
    hand.press();
    for (int x = 210; x <= 260; x += 10)
        hand.moveTo(view(), QPointF(x, 200));
    hand.release();
    hand.key(key, false);
}

QByteArray Toolbox::saved() {
    const QString path = directory_.filePath(QStringLiteral("scene.ma"));
    EXPECT_TRUE(
        run(QStringLiteral("file -rename \"%1\"; file -type mayaAscii; file -f -save").arg(path)));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray all = file.readAll();
    return all.mid(all.indexOf("createNode"));
}

} // namespace vellum::test
