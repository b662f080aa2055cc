// A label with an icon or a plain colour that can be clicked. It takes no keyboard and has no frame
// but the one its colours make. Main thread only.
#pragma once

#include <QColor>
#include <QImage>
#include <QLabel>

namespace vellum {

class FlatButton : public QLabel {
    Q_OBJECT

public:
    /// 30 by 30, before the screen's scale.
    explicit FlatButton(QWidget* parent = nullptr);

    /// `side`: before the screen's scale.
    void setSide(int side);

    /// `padding`: between the image and the border, both sides together, before the screen's scale.
    void setImage(const QImage& image, int padding);

    /// An invalid background stands for the palette's, an invalid tint leaves the image's colours.
    void setColors(const QColor& background, const QColor& tint = QColor());
    const QColor& background() const { return background_; }

    /// Whether the image becomes white under the pointer. On unless set.
    void setHoverHighlighting(bool on);
    bool isHovered() const { return hovered_; }

Q_SIGNALS:
    void clicked();
    void pressed();
    void released();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void setHovered(bool hovered);
    void renderImage();
    void applyStyle();

    QImage image_;
    int padding_ = 0;
    QColor defaultBackground_;
    QColor background_;
    QColor tint_;
    bool highlightsHover_ = true;
    bool hovered_ = false;
    bool pressed_ = false; ///< the left button went down here
};

} // namespace vellum
