// The text tool at hand: a text is begun with a click and typed with the keyboard.
#pragma once

#include "plugin/base/Settings.h"
#include "tools/ToolSession.h"

#include <QColor>

namespace vellum::test {

class TextSession : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        settings().activeTool = Tool::Text;
        settings().of(Tool::Text).fontFamily = QStringLiteral("DejaVu Sans");
        settings().of(Tool::Text).size = 40;
        settings().activeColor = QColor(30, 60, 250);
        activateDrawTool();
    }

    void begin(QPoint place = {150, 120}) {
        moveTo(place);
        press();
        ASSERT_TRUE(waitFor([this] { return sampled() == 1; }));
        release();
    }
    QString typed() {
        const Stroke* stroke = document()->currentStroke();
        return stroke ? stroke->text : QStringLiteral("<no text>");
    }
    // Picture pixels with ink.
    static int inkIn(const QImage& image) {
        int found = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                found += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
        }
        return found;
    }
};

} // namespace vellum::test
