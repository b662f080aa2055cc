#pragma once

#include <QColor>

class QApplication;

namespace host::theme {

// A dark interface: pictures are judged against neutral grey.
inline const QColor window(68, 68, 68);
inline const QColor panel(58, 58, 58);
inline const QColor field(43, 43, 43);
inline const QColor border(34, 34, 34);
inline const QColor text(200, 200, 200);
inline const QColor dimText(140, 140, 140);
inline const QColor accent(82, 133, 166);
inline const QColor tick(105, 105, 105);
inline const QColor currentFrame(96, 144, 178, 190);
inline const QColor highlightedRange(140, 46, 46, 200);
inline const QColor rangeEnd(230, 210, 80);

void apply(QApplication& application);

} // namespace host::theme
