#pragma once

#include <QVBoxLayout>
#include <QWidget>

namespace host {

/// A layout whose children stand one below the other, at the top.
class ColumnLayout : public QWidget {
    Q_OBJECT
public:
    explicit ColumnLayout(QWidget* parent = nullptr) : QWidget(parent) {
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        column->setAlignment(Qt::AlignTop);
    }
};

} // namespace host
