// Loading and unloading with everything open; VELLUM_TEST_LOADS says how often.
#include "support/Paths.h"
#include "ui/MainWindow.h"
#include "ui/PanelSession.h"
#include "ui/ViewWidget.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QtCore/private/qhooks_p.h>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <mutex>
#include <unordered_set>

namespace vellum::test {
namespace {

using testing::IsEmpty;

/// Every QObject made while it lives, event filters without a parent included.
class ObjectWatch {
public:
    ObjectWatch() {
        qtHookData[QHooks::AddQObject] = reinterpret_cast<quintptr>(&add);
        qtHookData[QHooks::RemoveQObject] = reinterpret_cast<quintptr>(&remove);
    }
    ~ObjectWatch() {
        qtHookData[QHooks::AddQObject] = 0;
        qtHookData[QHooks::RemoveQObject] = 0;
        objects_.clear();
    }

    /// Those of a class of the plug-in's library, which has to be loaded.
    static std::unordered_set<const QObject*> ofPlugin() {
        const QString library = QFileInfo(support::pluginPath()).fileName();
        std::unordered_set<const QObject*> found;
        const std::lock_guard lock(mutex_);
        for (const QObject* object : objects_) {
            Dl_info where{};
            const void* table = *reinterpret_cast<void* const*>(object);
            if (dladdr(table, &where) && QFileInfo(where.dli_fname).fileName() == library)
                found.insert(object);
        }
        return found;
    }

    static bool isAlive(const QObject* object) {
        const std::lock_guard lock(mutex_);
        return objects_.count(object) > 0;
    }

private:
    static void add(QObject* object) {
        const std::lock_guard lock(mutex_);
        objects_.insert(object);
    }
    static void remove(QObject* object) {
        const std::lock_guard lock(mutex_);
        objects_.erase(object);
    }

    static inline std::mutex mutex_; ///< the sampling thread makes some, too
    static inline std::unordered_set<const QObject*> objects_;
};

class Loads : public PanelSession {
protected:
    static int cycles() {
        const int asked = qEnvironmentVariableIntValue("VELLUM_TEST_LOADS");
        return asked > 0 ? asked : 4;
    }

    void openEverything() {
        // The toolbox after the options, of which it has its own.
        const char* const panels[][2] = {{"-toolOptions", "ToolOptionsDialog"},
                                         {"-toolbox", "ToolboxDialog"},
                                         {"-layerManager", "LayerManagerDialog"},
                                         {"-cp", "ColorPaletteDialog"},
                                         {"-rtt", "RetimingDialog"}};
        QPoint place;
        for (const auto& [flag, className] : panels) {
            QDialog* dialog = open(flag, className);
            ASSERT_TRUE(dialog);
            dialog->move(place += QPoint(20, 40)); // none covers another
        }
        EXPECT_TRUE(run(QStringLiteral("rvVellumUtil -rvi; rvVellumNode -layer -camera persp;"
                                       "rvVellumUtil -transform; rvVellumUtil -brushTool")));
        ASSERT_TRUE(QMetaObject::invokeMethod(panel("ColorPaletteDialog"), "ShowContextMenu",
                                              Q_ARG(QPoint, QPoint(3, 3))));
        support::settle();
        EXPECT_TRUE(QApplication::activePopupWidget());
        EXPECT_TRUE(run(QStringLiteral("file -f -new"))); // a drawing would keep it loaded
    }

    static std::string widgets() {
        QStringList names;
        for (const QWidget* widget : QApplication::allWidgets()) {
            const QString name = QString::fromLatin1(widget->metaObject()->className());
            if (!name.startsWith(QStringLiteral("QDesktop"))) // Qt makes them when it needs them
                names.append(name);
        }
        names.sort();
        return names.join(QLatin1Char(' ')).toStdString();
    }

    QStringList menus() {
        QStringList titles;
        for (const QAction* action : window->menuBar()->actions())
            titles.append(action->text());
        return titles;
    }
};

TEST_F(Loads, NothingIsLeftWhenThePluginGoes) {
    unloadPlugin();
    support::settle();
    const QStringList menusBefore = menus();
    const ObjectWatch watch;
    std::string widgetsBefore;
    for (int cycle = 1; cycle <= cycles(); ++cycle) {
        SCOPED_TRACE(cycle);
        loadPlugin();
        openEverything();
        const auto made = ObjectWatch::ofPlugin();
        EXPECT_GT(made.size(), 50U) << "what is looked for is not seen";
        const bool atOnce = cycle % 2 == 0; // or with what the queues hold handled before
        if (!atOnce)
            support::settle();
        unloadPlugin();

        QStringList left;
        for (const QObject* object : made) {
            if (ObjectWatch::isAlive(object))
                left.append(QString::number(reinterpret_cast<quintptr>(object), 16));
        }
        EXPECT_THAT(left, IsEmpty());
        EXPECT_EQ(menus(), menusBefore);
        EXPECT_EQ(number(QStringLiteral("control -exists rvVlToolboxColorPickerBtn")), 0);
        EXPECT_EQ(number(QStringLiteral("window -exists rvVlToolboxColorPickerBtnWindow")), 0);
        support::settle();
        const std::string widgets = Loads::widgets();
        if (cycle > 1) {
            EXPECT_EQ(widgets, widgetsBefore);
        }
        widgetsBefore = widgets;

        // What is left of us on the way of an event would be called now.
        hand.moveTo(view(), {100, 100});
        hand.press();
        hand.moveTo(view(), {140, 120});
        hand.release();
        hand.type({Qt::Key_B});
    }
    loadPlugin(); // as the fixture expects it
}

} // namespace
} // namespace vellum::test
