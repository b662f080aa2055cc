// The toolbox is open, beside the view.
#pragma once

#include "ui/PanelSession.h"

#include <QStringList>
#include <QTemporaryDir>

class QLabel;
class QMenu;

namespace vellum::test {

class Toolbox : public PanelSession {
protected:
    void SetUp() override;

    void show();
    /// Loads the plug-in anew with this preference.
    void reload(const char* preference, bool on);

    QLabel& button(const QString& toolTip);
    /// Tool tips of the buttons from the upper left, row by row.
    QStringList buttons();
    /// Those that have the colour of what is on.
    QStringList lit();

    QDialog* popUp(); ///< the options of a tool, while they can be seen
    QMenu* menu();

    /// "red green blue" of the drawing colour.
    QString color();
    /// Holds the key and drags to the right.
    void dragInView(Qt::Key key);
    /// The scene's text as it is saved, without its header.
    QByteArray saved();

    QDialog* box = nullptr;

private:
    QTemporaryDir directory_;
};

} // namespace vellum::test
