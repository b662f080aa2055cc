#include "ui/TimeBar.h"

#include "foundation/Events.h"
#include "ui/Playback.h"
#include "ui/SceneTime.h"
#include "ui/Theme.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>

namespace host {

namespace {

/// A standard icon in the colour of the interface's text; the style draws them black.
QIcon mediaIcon(const QStyle& style, QStyle::StandardPixmap which) {
    QPixmap picture = style.standardIcon(which).pixmap(32, 32);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), theme::text);
    painter.end();
    return QIcon(picture);
}

} // namespace

TimeBar::TimeBar(QWidget* parent) : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->setSpacing(3);

    first_ = addField(tr("First frame of the playback range"));
    layout->addWidget(first_);
    layout->addStretch(1);
    QToolButton* toStart = addButton(QStyle::SP_MediaSkipBackward, tr("Go to the first frame"));
    QToolButton* back = addButton(QStyle::SP_MediaSeekBackward, tr("One frame back"));
    play_ = addButton(QStyle::SP_MediaPlay, tr("Play or stop (Alt+V)"));
    play_->setObjectName(QStringLiteral("playButton"));
    QToolButton* forward = addButton(QStyle::SP_MediaSeekForward, tr("One frame forward"));
    QToolButton* toEnd = addButton(QStyle::SP_MediaSkipForward, tr("Go to the last frame"));
    for (QToolButton* button : {toStart, back, play_, forward, toEnd})
        layout->addWidget(button);
    current_ = addField(tr("Current time"));
    current_->setObjectName(QStringLiteral("currentTimeField"));
    layout->addWidget(current_);
    layout->addStretch(1);
    last_ = addField(tr("Last frame of the playback range"));
    layout->addWidget(last_);

    const auto step = [](int frames) { sceneTime::setCurrent(sceneTime::current() + frames); };
    connect(toStart, &QToolButton::clicked, this,
            [] { sceneTime::setCurrent(sceneTime::first()); });
    connect(toEnd, &QToolButton::clicked, this, [] { sceneTime::setCurrent(sceneTime::last()); });
    connect(back, &QToolButton::clicked, this, [step] { step(-1); });
    connect(forward, &QToolButton::clicked, this, [step] { step(1); });
    connect(play_, &QToolButton::clicked, this, [] {
        Playback& playback = Playback::instance();
        playback.isPlaying() ? playback.stop() : playback.start(Playback::Direction::Forward);
    });
    connect(&Playback::instance(), &Playback::stateChanged, this, [this](bool playing) {
        play_->setIcon(mediaIcon(*style(), playing ? QStyle::SP_MediaStop : QStyle::SP_MediaPlay));
    });
    const auto edited = QOverload<double>::of(&QDoubleSpinBox::valueChanged);
    connect(first_, edited, this, [](double frame) { sceneTime::setFirst(frame); });
    connect(last_, edited, this, [](double frame) { sceneTime::setLast(frame); });
    connect(current_, edited, this, [](double frame) { sceneTime::setCurrent(frame); });

    timeListener_ = events::listen([this](const std::string& event) {
        if (event == "timeChanged" || event == "playbackRangeChanged" || event == "timeUnitChanged")
            showTime();
    });
    showTime();
}

TimeBar::~TimeBar() {
    events::removeListener(timeListener_);
}

QToolButton* TimeBar::addButton(int icon, const QString& tip) {
    auto* button = new QToolButton(this);
    button->setIcon(mediaIcon(*style(), static_cast<QStyle::StandardPixmap>(icon)));
    button->setToolTip(tip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

QDoubleSpinBox* TimeBar::addField(const QString& tip) {
    auto* field = new QDoubleSpinBox(this);
    field->setButtonSymbols(QAbstractSpinBox::NoButtons);
    field->setRange(-1e6, 1e6);
    field->setDecimals(2);
    field->setFixedWidth(70);
    field->setToolTip(tip);
    field->setKeyboardTracking(false);
    field->setFocusPolicy(Qt::ClickFocus);
    return field;
}

void TimeBar::showTime() {
    const struct {
        QDoubleSpinBox* field;
        double value;
    } fields[] = {
        {first_, sceneTime::first()}, {last_, sceneTime::last()}, {current_, sceneTime::current()}};
    for (const auto& [field, value] : fields) {
        const QSignalBlocker blocker(field);
        field->setValue(value);
    }
}

} // namespace host
