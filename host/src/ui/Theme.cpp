#include "ui/Theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace host::theme {

void apply(QApplication& application) {
    if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion")))
        QApplication::setStyle(fusion);
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, field);
    palette.setColor(QPalette::AlternateBase, panel);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(84, 84, 84));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, field);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, dimText);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Light, QColor(94, 94, 94));
    palette.setColor(QPalette::Midlight, QColor(78, 78, 78));
    palette.setColor(QPalette::Mid, QColor(54, 54, 54));
    palette.setColor(QPalette::Dark, QColor(42, 42, 42));
    palette.setColor(QPalette::Shadow, QColor(24, 24, 24));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(140, 140, 140));
    QApplication::setPalette(palette);

    application.setStyleSheet(QStringLiteral(
        "host--ModelPanel { border: 1px solid #222222; }"
        "host--ModelPanel[active=\"true\"] { border: 1px solid #5285a6; }"
        "host--ModelPanel QMenuBar { background: #3a3a3a; }"
        "QLabel[role=\"camera\"] { background: #3a3a3a; padding: 1px; }"
        "QLabel[role=\"help\"] { color: #a0a0a0; padding: 1px 6px; }"
        "QLabel[role=\"title\"] { color: #c8c8c8; }"
        "QToolButton { border: 1px solid transparent; border-radius: 2px; padding: 3px; }"
        "QToolButton:hover { background: #5a5a5a; }"
        "QToolButton:checked { background: #5285a6; }"
        "QSplitter::handle { background: #2b2b2b; }"
        "QLineEdit, QAbstractSpinBox { border: 1px solid #2b2b2b; border-radius: 2px;"
        " padding: 1px 3px; background: #2b2b2b; }"));
}

} // namespace host::theme
