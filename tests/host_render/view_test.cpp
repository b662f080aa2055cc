#include "host_render/Canvas.h"
#include "host_render/Probe.h"
#include "render/DrawOverrides.h"
#include "render/View.h"
#include "render/Views.h"
#include "script/Interpreter.h"
#include "ui/StartUp.h"

#include <QCoreApplication>

#include <maya/MGlobal.h>
#include <maya/MObjectHandle.h>
#include <maya/MRenderUtil.h>
#include <maya/MSelectionList.h>

#include <cmath>
#include <memory>

using namespace render_test;
using host::Renderer;
using host::View;
using host::Views;

namespace {

MDagPath pathOf(const char* name) {
    MSelectionList list;
    MDagPath path;
    EXPECT_TRUE(list.add(name)) << name;
    EXPECT_TRUE(list.getDagPath(0, path)) << name;
    return path;
}

void run(const std::string& script) {
    EXPECT_EQ(MGlobal::executeCommand(script.c_str(), false, true), MS::kSuccess) << script;
}

const QSize size(200, 120);

QColor at(const QImage& image, int x, int y) {
    return image.pixelColor(x, image.height() - 1 - y);
}

/// Pixels of a colour no background, grid or shape has.
QRect redArea(const QImage& image) {
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == QColor(Qt::red))
                area |= QRect(x, image.height() - 1 - y, 1, 1);
    return area;
}

struct ViewTest : testing::Test {
    ViewTest() {
        host::startUp();
        run("file -f -new");
        probe() = ProbeState();
        view = std::make_unique<View>("probePanel");
        view->setPortSize(size.width(), size.height());
    }
    ~ViewTest() override {
        view.reset();
        run("file -f -new");
    }
    QImage picture() { return view->renderToImage(size); }
    static void makeProbe() {
        run("createNode transform -n first; createNode renderProbe -n firstShape -p first");
    }

    ProbePlugin plugin;
    std::unique_ptr<View> view;
};

const QRect square(100 - squareHalf, 60 - squareHalf, 2 * squareHalf, 2 * squareHalf);

TEST_F(ViewTest, BothRenderersShowTheSameSquare) {
    makeProbe();
    EXPECT_EQ(redArea(picture()), square);
    EXPECT_EQ(probe().drawn, 1);
    EXPECT_EQ(probe().callbacks, 1);
    EXPECT_TRUE(probe().order.empty()) << "Viewport 2.0 does not call draw";
    EXPECT_EQ(probe().width, size.width());

    view->setRenderer(Renderer::Legacy);
    EXPECT_EQ(redArea(picture()), square);
    EXPECT_EQ(probe().drawn, 1);
    EXPECT_EQ(probe().order.size(), 1u);

    run("setAttr first.visibility 0");
    EXPECT_TRUE(redArea(picture()).isEmpty());
}

TEST_F(ViewTest, OnlyAnOverrideThatSaysSoGetsUiDrawables) {
    makeProbe();
    probe().uiDrawables = false;
    EXPECT_TRUE(redArea(picture()).isEmpty());
    EXPECT_EQ(probe().prepared, 1);
    EXPECT_EQ(probe().drawn, 0);
    EXPECT_EQ(probe().callbacks, 1);
}

TEST_F(ViewTest, ABoundedOverrideIsCulledByItsBox) {
    makeProbe();
    probe().bounded = true;
    EXPECT_EQ(redArea(picture()), square) << "the default box, a point at the origin, is seen";
    run("setAttr persp.rotateY 200");
    EXPECT_TRUE(redArea(picture()).isEmpty()) << "the origin is behind the camera";
    EXPECT_EQ(probe().prepared, 1) << "a culled object is not prepared";
    probe().box = MBoundingBox(MPoint(-1e5, -1e5, -1e5), MPoint(1e5, 1e5, 1e5));
    EXPECT_EQ(redArea(picture()), square) << "a box around the camera is seen";
    probe().box = MBoundingBox();
    probe().bounded = false;
    EXPECT_EQ(redArea(picture()), square) << "without bounds nothing is culled";
}

TEST_F(ViewTest, UserDataBelongToThePanelAndTheRenderer) {
    makeProbe();
    View second("secondPanel");
    second.setPortSize(50, 50);
    ASSERT_TRUE(second.setCamera(pathOf("top")));
    picture();
    second.renderToImage(QSize(50, 50));
    picture();
    EXPECT_EQ(probe().created, 1) << "one override for two panels";
    EXPECT_EQ(probe().cameras, (std::vector<std::string>{"perspShape", "topShape", "perspShape"}));
    EXPECT_EQ(probe().oldData[0], nullptr);
    EXPECT_EQ(probe().oldData[1], nullptr);
    EXPECT_NE(probe().oldData[2], nullptr) << "what the first panel kept";
    EXPECT_EQ(probe().dataAlive, 2);

    probe().freshData = true;
    picture();
    EXPECT_EQ(probe().dataAlive, 2) << "what is replaced is deleted";
    view = std::make_unique<View>("thirdPanel");
    EXPECT_EQ(probe().dataAlive, 1) << "the panel took its data along";
}

TEST_F(ViewTest, OverridesGoWithTheObjectForGoodOrWithTheCreator) {
    makeProbe();
    picture();
    run("delete first");
    picture();
    EXPECT_EQ(probe().destroyed, 0) << "undo can bring the object back";
    run("undo");
    EXPECT_EQ(redArea(picture()), square);
    EXPECT_EQ(probe().created, 1);

    run("file -f -new");
    picture();
    EXPECT_EQ(probe().destroyed, 1);
    EXPECT_EQ(probe().dataAlive, 0);

    makeProbe();
    picture();
    EXPECT_EQ(probe().created, 2);
    plugin.deregisterOverride();
    EXPECT_EQ(probe().destroyed, 2);
    EXPECT_EQ(probe().dataAlive, 0);
    EXPECT_TRUE(redArea(picture()).isEmpty());
}

TEST_F(ViewTest, AnOverrideThatIsNotAlwaysDirtyIsPreparedWhenSomethingChanged) {
    probe().alwaysDirty = false;
    makeProbe();
    picture();
    EXPECT_EQ(redArea(picture()), square) << "drawn from what was queued before";
    EXPECT_EQ(probe().prepared, 1);
    run("setAttr first.translateX 3");
    picture();
    EXPECT_EQ(probe().prepared, 2) << "moved";
    run("setAttr persp.translateX 3");
    picture();
    EXPECT_EQ(probe().prepared, 3) << "the camera moved";
    run("setAttr firstShape.localScaleX 3");
    picture();
    EXPECT_EQ(probe().prepared, 4) << "an attribute changed";
    MHWRender::MRenderer::setGeometryDrawDirty(pathOf("firstShape").node());
    picture();
    picture();
    EXPECT_EQ(probe().prepared, 5);
}

TEST_F(ViewTest, LegacyOrderAndExclusionOfLocators) {
    view->setRenderer(Renderer::Legacy);
    makeProbe();
    run("createNode transform -n second; createNode renderProbe -n secondShape -p second");
    probe().last = true;
    picture();
    EXPECT_EQ(probe().order, (std::vector<std::string>{"secondShape", "firstShape"}));
    probe().order.clear();
    view->setLocatorsShown(false);
    picture();
    EXPECT_EQ(probe().order.size(), 2u) << "these do not count as locators";
    probe().excluded = true;
    probe().order.clear();
    EXPECT_TRUE(redArea(picture()).isEmpty());
    EXPECT_TRUE(probe().order.empty());
}

TEST_F(ViewTest, RegistrationIsCheckedAndForgottenCreatorsGoWithTheirLibrary) {
    using Registry = MHWRender::MDrawRegistry;
    EXPECT_FALSE(Registry::registerDrawOverrideCreator("drawdb/geometry/renderProbe", "other",
                                                       ProbeOverride::creator));
    EXPECT_FALSE(
        Registry::registerDrawOverrideCreator("drawdb/shader/x", "x", ProbeOverride::creator));
    EXPECT_FALSE(Registry::registerDrawOverrideCreator("drawdb/geometry/x", "x", nullptr));
    EXPECT_FALSE(Registry::deregisterDrawOverrideCreator("drawdb/geometry/renderProbe", "other"));

    makeProbe();
    ASSERT_TRUE(Registry::registerDrawOverrideCreator("drawdb/geometry/forgotten", "x",
                                                      ProbeOverride::creator));
    EXPECT_TRUE(host::DrawOverrides::instance().removeFrom("/nowhere/else.so").empty());
    picture();
    EXPECT_EQ(host::DrawOverrides::instance()
                  .removeFrom(QCoreApplication::applicationFilePath().toStdString())
                  .size(),
              2u);
    EXPECT_EQ(probe().destroyed, 1);
    EXPECT_TRUE(redArea(picture()).isEmpty());
    ASSERT_TRUE(Registry::registerDrawOverrideCreator("drawdb/geometry/renderProbe",
                                                      "renderProbePlugin", ProbeOverride::creator));
}

TEST_F(ViewTest, WhatALocatorLeavesOnTheStacksIsUnwound) {
    view->setRenderer(Renderer::Legacy);
    makeProbe();
    run("createNode transform -n second; createNode renderProbe -n secondShape -p second");
    probe().unbalanced = true;
    std::vector<std::string> warnings;
    const int listener =
        host::report::addListener([&](host::report::Level level, const std::string& text) {
            if (level == host::report::Level::Warning)
                warnings.push_back(text);
        });
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(redArea(picture()), square) << "stacks have 32 places at least";
    host::report::removeListener(listener);
    EXPECT_EQ(warnings.size(), 80u);
}

TEST_F(ViewTest, ToolDrawablesLieOverTheSceneInViewportTwo) {
    const auto blueAt = [this](int x, int y) { return at(picture(), x, y) == QColor(Qt::blue); };
    const auto blue = [](host::DrawManager& manager, double x) {
        manager.api().beginDrawable();
        manager.api().setColor(MColor(0, 0, 1));
        manager.api().rect2d(MPoint(x, 60), MVector(0, 1, 0), 10, 10, true);
        manager.api().endDrawable();
    };
    makeProbe();
    host::DrawManager manager("tool");
    blue(manager, 100);
    view->setToolDrawables(manager.take());
    EXPECT_TRUE(blueAt(100, 60));
    EXPECT_TRUE(blueAt(100, 60)) << "until replaced";
    view->setFeedback([&](host::DrawManager& each, const MHWRender::MFrameContext& context) {
        int x = 0, y = 0, width = 0, height = 0;
        context.getViewportDimensions(x, y, width, height);
        blue(each, width - 15);
    });
    EXPECT_TRUE(blueAt(185, 60));
    view->setRenderer(Renderer::Legacy);
    EXPECT_FALSE(blueAt(100, 60));
    EXPECT_FALSE(blueAt(185, 60));
    view->setRenderer(Renderer::Viewport2);
    view->setToolDrawables({});
    EXPECT_FALSE(blueAt(100, 60));
}

TEST_F(ViewTest, DirectDrawingStaysUntilTheNextRefreshAndXorErasesItself) {
    // A surface that keeps its picture, as a widget with partial updates does.
    host::GlOffscreen* offscreen = host::GlOffscreen::instance();
    ASSERT_NE(offscreen, nullptr);
    ASSERT_TRUE(offscreen->makeCurrent());
    auto target = std::make_unique<QOpenGLFramebufferObject>(
        size, QOpenGLFramebufferObject::CombinedDepthStencil);
    int repaints = 0;
    host::View::Surface surface;
    surface.makeCurrent = [&] { return offscreen->makeCurrent() && target->bind(); };
    surface.doneCurrent = [&] { offscreen->doneCurrent(); };
    surface.repaint = [&](bool) { ++repaints; };
    view->setSurface(surface);
    const auto paint = [&] {
        surface.makeCurrent();
        view->paint();
        return target->toImage();
    };
    view->setGridShown(false);
    view->setRenderer(Renderer::Legacy);
    const QImage before = paint();

    M3dView handle = view->handle();
    const auto cross = [&handle] {
        ASSERT_EQ(handle.beginXorDrawing(), MS::kSuccess);
        glBegin(GL_LINES);
        glVertex2f(10, 10);
        glVertex2f(150, 90);
        glEnd();
        ASSERT_EQ(handle.endXorDrawing(), MS::kSuccess);
    };
    cross();
    EXPECT_EQ(repaints, 1);
    const QImage drawn = paint();
    EXPECT_NE(drawn, before) << "painting shows what was drawn";
    cross();
    EXPECT_EQ(paint(), before) << "drawn twice is erased";
    cross();
    view->refresh();
    EXPECT_EQ(paint(), before) << "a refresh draws the scene anew";
    EXPECT_EQ(handle.endGL(), MS::kSuccess) << "an end too many does no harm";

    view->setRenderer(Renderer::Viewport2);
    host::DrawManager faint("tool");
    faint.api().beginDrawable();
    faint.api().setColor(MColor(1, 1, 1, 0.5f));
    faint.api().rect2d(MPoint(100, 60), MVector(0, 1, 0), 10, 10, true);
    faint.api().endDrawable();
    view->setToolDrawables(faint.take());
    EXPECT_EQ(qAlpha(paint().pixel(100, 60)), 255) << "the widget's picture stays opaque";
    view->setSurface({});
    target.reset();
    offscreen->doneCurrent();
}

TEST_F(ViewTest, HandlesKnowTheirViewsAndFailAfterwards) {
    MStatus status;
    M3dView handle = M3dView::active3dView(&status);
    ASSERT_EQ(status, MS::kSuccess);
    EXPECT_EQ(M3dView::numberOf3dViews(), 1u);
    EXPECT_EQ(handle.portWidth(), size.width());
    EXPECT_EQ(handle.portHeight(), size.height());
    EXPECT_EQ(handle.getRendererName(), M3dView::kViewport2Renderer);
    MDagPath camera;
    ASSERT_EQ(handle.getCamera(camera), MS::kSuccess);
    EXPECT_EQ(camera.partialPathName(), MString("perspShape"));
    camera = pathOf("side");
    ASSERT_EQ(handle.setCamera(camera), MS::kSuccess);
    ASSERT_EQ(handle.getCamera(camera), MS::kSuccess);
    EXPECT_EQ(camera.partialPathName(), MString("sideShape"));
    EXPECT_EQ(handle.widget(&status), nullptr);
    EXPECT_EQ(status, MS::kFailure);
    EXPECT_EQ(handle.beginGL(), MS::kFailure) << "no widget, no context";

    M3dView found;
    EXPECT_EQ(M3dView::getM3dViewFromModelPanel("nowhere", found), MS::kInvalidParameter);
    EXPECT_EQ(M3dView::getM3dViewFromModelPanel("probePanel", found), MS::kSuccess);
    EXPECT_EQ(M3dView::get3dView(1, found), MS::kInvalidParameter);

    view.reset();
    M3dView::active3dView(&status);
    EXPECT_EQ(status, MS::kFailure);
    EXPECT_EQ(handle.getCamera(camera), MS::kFailure);
    EXPECT_EQ(handle.refresh(), MS::kFailure);
    handle.portWidth(&status);
    EXPECT_EQ(status, MS::kFailure);
}

TEST_F(ViewTest, WorldToViewAndBackAgreeWithWhatIsDrawn) {
    view->setRenderer(Renderer::Legacy);
    M3dView handle = view->handle();
    run("createNode transform -n ball; setAttr ball.translate 2 1 -1");
    short x = 0;
    short y = 0;
    EXPECT_TRUE(handle.worldToView(MPoint(2, 1, -1), x, y));
    MPoint nearPoint;
    MVector direction;
    ASSERT_EQ(handle.viewToWorld(x, y, nearPoint, direction), MS::kSuccess);
    const MVector toPoint = MPoint(2, 1, -1) - nearPoint;
    EXPECT_LT((toPoint ^ direction).length() / toPoint.length(), 0.01) << "within a pixel";

    run("polySphere -r 0.3 -n dot; move -a 2 1 -1 dot; displayPref -displayGradient 0");
    view->setGridShown(false);
    const QImage image = picture();
    run("displayPref -displayGradient 1");
    EXPECT_NE(at(image, x, y), at(image, 1, 1)) << "the sphere is where the point maps to";
    EXPECT_EQ(at(image, 150, 10), at(image, 1, 1));
}

TEST_F(ViewTest, TheFrameContextAnswersForItsView) {
    using Context = MHWRender::MFrameContext;
    const auto context = host::FrameAccess::context(view->frame());
    EXPECT_EQ(context->getCurrentCameraPath().partialPathName(), MString("perspShape"));
    const MMatrix both = context->getMatrix(Context::kViewProjMtx);
    EXPECT_TRUE(both.isEquivalent(context->getMatrix(Context::kViewMtx) *
                                  context->getMatrix(Context::kProjectionMtx)));
    EXPECT_TRUE(context->getMatrix(Context::kViewProjTranposeMtx).isEquivalent(both.transpose()));
    EXPECT_TRUE((both * context->getMatrix(Context::kViewProjInverseMtx))
                    .isEquivalent(MMatrix::identity, 1e-6));
    EXPECT_TRUE(context->getMatrix(Context::kViewProjTranspInverseMtx)
                    .isEquivalent(both.inverse().transpose(), 1e-6));
    MStatus status;
    context->getMatrix(Context::kWorldViewMtx, &status);
    EXPECT_EQ(status, MS::kInvalidParameter) << "no object here";

    double x = 0;
    double y = 0;
    EXPECT_TRUE(context->worldToViewport(MPoint(0, 0, 0), x, y));
    MPoint nearPoint;
    MVector direction;
    ASSERT_EQ(context->viewportToWorld(x, y, nearPoint, direction), MS::kSuccess);
    const MVector toOrigin = MPoint(0, 0, 0) - nearPoint;
    EXPECT_LT((toOrigin ^ direction).length(), 1e-6 * toOrigin.length());
    EXPECT_GT(toOrigin * direction, 0);
    EXPECT_FALSE(context->worldToViewport(MPoint(1000, 1000, 1000), x, y)) << "behind the eye";
}

TEST_F(ViewTest, AnimatedShapesMoveAndHiddenOrTemplatedOnesChangeTheirLook) {
    run("displayPref -displayGradient 0; lookThru front; polySphere -r 2 -n ball;"
        "setKeyframe -t 1 -at translateX -v -8 ball; setKeyframe -t 9 -at translateX -v 8 ball;"
        "select -cl");
    view->setGridShown(false);
    const auto area = [this] {
        const QImage image = picture();
        const QColor ground = image.pixelColor(0, 0);
        QRect found;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) != ground)
                    found |= QRect(x, y, 1, 1);
        return found;
    };
    run("currentTime 1");
    const QRect first = area();
    run("currentTime 9");
    const QRect last = area();
    EXPECT_NEAR(first.center().x() + last.center().x(), size.width(), 2) << "mirrored";
    EXPECT_LT(first.right(), last.left());
    EXPECT_EQ(first.size(), last.size());
    const QImage solid = picture();
    run("select -r ball");
    EXPECT_NE(picture(), solid) << "the selection shows";
    run("select -cl; setAttr ball.template 1");
    EXPECT_NE(picture(), solid) << "as wires";
    EXPECT_NEAR(area().width(), last.width(), 2);
    run("setAttr ball.template 0; setAttr ball.visibility 0");
    EXPECT_TRUE(area().isEmpty());
    run("displayPref -displayGradient 1");
    EXPECT_FALSE(area().isEmpty());
}

TEST_F(ViewTest, TheRendererIsSetForAllViewsByName) {
    View second("secondPanel");
    Renderer renderer = Renderer::Viewport2;
    EXPECT_FALSE(host::rendererFromName("arnold", renderer));
    EXPECT_TRUE(host::rendererFromName("legacy", renderer));
    host::setDefaultRenderer(renderer);
    EXPECT_EQ(second.renderer(), Renderer::Legacy);
    EXPECT_EQ(view->handle().getRendererName(), M3dView::kDefaultQualityRenderer);
    EXPECT_EQ(View("third").handle().rendererString(), MString("base_OpenGL_Renderer"));
    EXPECT_TRUE(host::rendererFromName("vp2Renderer", renderer));
    host::setDefaultRenderer(renderer);
    EXPECT_EQ(second.handle().getRendererName(), M3dView::kViewport2Renderer);
}

TEST_F(ViewTest, RefreshPaintsTheActiveViewOrAllOfThem) {
    View second("secondPanel");
    int now[2] = {};
    int later[2] = {};
    View* const views[] = {view.get(), &second};
    for (int i = 0; i < 2; ++i) {
        View::Surface surface;
        surface.repaint = [&now, &later, i](bool atOnce) { ++(atOnce ? now : later)[i]; };
        views[i]->setSurface(surface);
    }
    run("refresh");
    EXPECT_EQ(now[0] + now[1], 2);
    Views::instance().setActive(&second);
    run("refresh -cv -f");
    EXPECT_EQ(now[0], 1);
    EXPECT_EQ(now[1], 2);
    run("setAttr persp.translateX 4");
    EXPECT_GE(later[0], 1) << "a change of the scene asks for a picture";
    EXPECT_GE(later[1], 1);
    EXPECT_FALSE(MGlobal::executeCommand("refresh -suspend 1")) << "said, not ignored";
    for (View* each : views)
        each->setSurface({});
}

TEST_F(ViewTest, AScaledCameraSeesTheSamePicture) {
    const MPoint point(2, 1, -1);
    const auto before = view->frame()->project(point);
    run("setAttr persp.scale 3 0.5 2");
    const auto after = view->frame()->project(point);
    EXPECT_NEAR(after.x, before.x, 1e-6);
    EXPECT_NEAR(after.y, before.y, 1e-6);
    const MPoint eye = MPoint(0, 0, 0) * pathOf("persp").inclusiveMatrix();
    EXPECT_NEAR((MPoint(eye) * view->frame()->view).distanceTo(MPoint()), 0, 1e-9);
}

TEST_F(ViewTest, ACameraThatIsDeletedGivesWayToPersp) {
    run("camera -n shot");
    ASSERT_TRUE(view->setCamera(pathOf("shot1"))) << "camera numbers its names";
    EXPECT_FALSE(view->setCamera(MDagPath()));
    run("delete shot1");
    EXPECT_EQ(view->camera().partialPathName(), MString("perspShape"));
    EXPECT_FALSE(picture().isNull());
}

TEST_F(ViewTest, APictureLeavesThePortAndTheCurrentContextAlone) {
    const QImage image = view->renderToImage(QSize(64, 32));
    EXPECT_EQ(image.size(), QSize(64, 32));
    EXPECT_EQ(view->portWidth(), size.width());
    EXPECT_EQ(QOpenGLContext::currentContext(), nullptr);
    EXPECT_EQ(qAlpha(image.pixel(3, 3)), 255);
    EXPECT_TRUE(view->renderToImage(QSize(0, 5)).isNull());
}

TEST_F(ViewTest, RenderSettingsComeFromTheScene) {
    MCommonRenderSettingsData settings;
    MRenderUtil::getCommonRenderSettings(settings);
    EXPECT_EQ(settings.width, 960u);
    EXPECT_EQ(settings.height, 540u);
    run("setAttr defaultResolution.width 1998; setAttr defaultResolution.height 1080");
    MRenderUtil::getCommonRenderSettings(settings);
    EXPECT_EQ(settings.width, 1998u);
    EXPECT_EQ(settings.height, 1080u);
}

TEST_F(ViewTest, LookThruNamesThePanelOrTheActiveView) {
    run("lookThru top");
    EXPECT_EQ(view->camera().partialPathName(), MString("topShape"));
    run("lookThru probePanel side; lookThru persp probePanel");
    EXPECT_EQ(view->camera().partialPathName(), MString("perspShape"));
    MString camera;
    EXPECT_EQ(MGlobal::executeCommand("lookThru -q", camera), MS::kSuccess);
    EXPECT_EQ(camera, MString("persp"));
    Errors errors;
    EXPECT_FALSE(MGlobal::executeCommand("lookThru time1"));
    EXPECT_FALSE(MGlobal::executeCommand("lookThru nothing"));
    EXPECT_EQ(errors.texts.size(), 2u);
    EXPECT_EQ(view->camera().partialPathName(), MString("perspShape"));
}

} // namespace
