#pragma once

#include <QString>
#include <QWidget>

#include <functional>

class QAction;
class QComboBox;
class QLabel;
class QMenu;

namespace host {

/// A label and a box that shows one of several items. The items are the actions of a menu, so
/// that scripts make, change and delete them as the items of any menu.
class OptionMenu : public QWidget {
    Q_OBJECT
public:
    explicit OptionMenu(QWidget* parent = nullptr);

    QMenu& menu() { return *menu_; }
    QComboBox& box() { return *box_; }

    QString label() const;
    void setLabel(const QString& text);

    int current() const; ///< from 1; 0 without items
    /// False, and nothing changes, when there is no such item or it is disabled.
    bool setCurrent(int number);
    bool setCurrent(const QString& value);
    QString value() const;

    QString changeCommand;   ///< run when the user chooses another item
    QString postMenuCommand; ///< run before the list opens
    bool alwaysCall = false; ///< also when the user chooses the item that is shown

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void rebuild();
    void chosen(int index);

    QLabel* label_;
    QComboBox* box_;
    QMenu* menu_;
    int shown_ = -1; ///< index of the item that was shown before the user chose
};

} // namespace host
