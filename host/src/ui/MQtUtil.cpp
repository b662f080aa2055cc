#include "ui/Elements.h"
#include "ui/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QScreen>

#include <maya/MQtUtil.h>

using host::ElementKind;
using host::Elements;

namespace {

QWidget* findWidget(const MString& name, ElementKind kind, const QWidget* ancestor = nullptr) {
    return qobject_cast<QWidget*>(
        Elements::instance().find(MQtUtil::toQString(name), kind, ancestor));
}

// Interface sizes follow the fonts of the desktop; Qt's own scale factor is applied by Qt.
double interfaceScale() {
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    if (!application || !QGuiApplication::primaryScreen())
        return 1.0;
    const double scale = QGuiApplication::primaryScreen()->logicalDotsPerInch() / 96.0;
    return scale > 0 ? scale : 1.0;
}

} // namespace

QWidget* MQtUtil::mainWindow() {
    return host::MainWindow::instance();
}

QWidget* MQtUtil::findControl(const MString& controlName, const QWidget* ancestor) {
    return findWidget(controlName, ElementKind::Control, ancestor);
}

QWidget* MQtUtil::findLayout(const MString& layoutName, const QWidget* ancestor) {
    return findWidget(layoutName, ElementKind::Layout, ancestor);
}

QWidget* MQtUtil::findWindow(const MString& windowName) {
    return findWidget(windowName, ElementKind::Window);
}

QAction* MQtUtil::findMenuItem(const MString& itemName) {
    QObject* item = Elements::instance().find(toQString(itemName), ElementKind::MenuItem);
    if (auto* menu = qobject_cast<QMenu*>(item))
        return menu->menuAction();
    return qobject_cast<QAction*>(item);
}

MString MQtUtil::fullName(const QObject* uiElement) {
    return toMString(Elements::instance().pathOf(uiElement));
}

QString MQtUtil::toQString(const MString& mstr) {
    return QString::fromUtf8(mstr.asUTF8());
}

MString MQtUtil::toMString(const QString& qstr) {
    MString result;
    result.setUTF8(qstr.toUtf8().constData());
    return result;
}

int MQtUtil::dpiScale(int size) {
    return qRound(size * interfaceScale());
}

float MQtUtil::dpiScale(float size) {
    return static_cast<float>(size * interfaceScale());
}

const char* MQtUtil::className() {
    return "MQtUtil";
}
