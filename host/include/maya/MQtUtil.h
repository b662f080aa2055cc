#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

class QAction;
class QObject;
class QString;
class QWidget;

/// The Qt objects behind interface elements made by the host or by scripts. Pointers belong to
/// the host and are null when there is no such element, or no interface at all.
class MQtUtil {
public:
    static QWidget* mainWindow();
    /// By name or by full path, elements separated by '|'; with an ancestor only below that.
    static QWidget* findControl(const MString& controlName, const QWidget* ancestor = NULL);
    static QWidget* findLayout(const MString& layoutName, const QWidget* ancestor = NULL);
    static QWidget* findWindow(const MString& windowName);
    static QAction* findMenuItem(const MString& itemName);
    /// Path of an element, elements separated by '|'; empty for an object that is none.
    static MString fullName(const QObject* uiElement);

    static QString toQString(const MString& mstr);
    static MString toMString(const QString& qstr);

    /// A size of the interface scaled for the screen.
    static int dpiScale(int size);
    static float dpiScale(float size);

    static const char* className();
};
