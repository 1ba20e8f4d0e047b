#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

#include "main_form_fixture.h"
#include "views/chart/chart_widget.h"
#include "views/form_decay_times.h"
#include "views/mdi_child.h"

// Display > Decay Times opens the table of the active document, in the window's pair mode,
// and is offered only while a document is open.
TEST_F(MainFormTest, DecayTimesShowsTheActiveDocument) {
    TMainForm& form = start();
    QAction* action = form.Action(QStringLiteral("DisplayDecayTimes"));
    ASSERT_NE(action, nullptr);
    EXPECT_FALSE(action->isEnabled());
    QMenu* display = form.menuBar()->actions().at(2)->menu();
    EXPECT_TRUE(display->actions().contains(action));

    ASSERT_TRUE(form.OpenDocumentFile(sample(QStringLiteral("5"), QStringLiteral("five.csv"))));
    ASSERT_TRUE(form.OpenDocumentFile(sample(QStringLiteral("7"), QStringLiteral("seven.csv"))));
    EXPECT_TRUE(action->isEnabled());
    form.ActiveDocument()->SetPairMode(1);

    QString title;
    int rows = -1;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto* shown = qobject_cast<TFormDecayTimes*>(QApplication::activeModalWidget())) {
            title = shown->windowTitle();
            rows = shown->Model().rowCount();
            shown->reject();
        }
    });
    answer.start(5);
    action->trigger();
    EXPECT_EQ(title, QStringLiteral("Decay Times - seven.csv"));
    EXPECT_EQ(rows, 4);  // the groups of the seven-channel layout

    form.MdiArea()->closeAllSubWindows();
    EXPECT_FALSE(action->isEnabled());
}

// Hovering a chart puts its readout in the status bar; leaving the plot gives the status back.
TEST_F(MainFormTest, ChartReadoutShowsInTheStatusBar) {
    TMainForm& form = start({sample(QStringLiteral("9"), QStringLiteral("nine.csv"))});
    form.resize(1400, 900);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    TMDIChild* child = form.ActiveDocument();
    ASSERT_NE(child, nullptr);
    child->showMaximized();
    QApplication::processEvents();
    const auto* chart = child->findChild<sonalyx::chart::ChartWidget*>(QStringLiteral("Chart1"));
    ASSERT_TRUE(chart != nullptr && chart->isVisible());

    const sonalyx::chart::ChartModel& model = chart->model();
    // A point within the level axis: the first ones of a curve may stand above it.
    const auto& points = model.series[0].points;
    const auto inside = std::find_if(points.begin(), points.end(), [&](const auto& p) {
        return p.y > model.left.minimum && p.y < model.left.maximum;
    });
    ASSERT_NE(inside, points.end());
    const sonalyx::chart::Point& point = *inside;
    const QPointF pixel = sonalyx::chart::ChartProjection::forChart(model, QRectF(chart->rect()))
                              .map(point.x, point.y, 0);
    QTest::mouseMove(const_cast<sonalyx::chart::ChartWidget*>(chart), pixel.toPoint());
    ASSERT_TRUE(chart->readout().shown);
    EXPECT_TRUE(chart->readout().text.contains(QStringLiteral(" ms, ")));
    EXPECT_EQ(form.statusBar()->currentMessage(), chart->readout().text);

    QTest::mouseMove(const_cast<sonalyx::chart::ChartWidget*>(chart), QPoint(1, 1));
    EXPECT_FALSE(chart->readout().shown);
    EXPECT_EQ(form.statusBar()->currentMessage(), child->FileName());
}
