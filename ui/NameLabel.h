// A label with a name that may be anything: on one line, cut where the room ends, with the whole
// name in its tool tip then. It asks for no width of its own. Main thread only.
#pragma once

#include <QLabel>
#include <QString>

namespace vellum {

class NameLabel : public QLabel {
    Q_OBJECT

public:
    enum class Weight { Normal, Bold };

    explicit NameLabel(Weight weight, QWidget* parent = nullptr);

    /// The label's text is the name, between tags where it is bold.
    void setName(const QString& name);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int room() const;
    void updateToolTip();

    Weight weight_;
    QString name_; ///< as it was given
    QString line_;
};

} // namespace vellum
