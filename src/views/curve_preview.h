#pragma once

#include <QColor>
#include <QPointF>
#include <QString>
#include <QVector>
#include <QWidget>

namespace sonalyx {

// A compact, read-only picture of a few curves on a dark plot: the document window shows its
// measurements with it until the full charts take over. In depth mode each curve is drawn a
// little further back than the one before, as a waterfall.
class CurvePreview : public QWidget {
    Q_OBJECT

  public:
    struct Series {
        QVector<QPointF> points;
        QColor colour;
    };
    struct Range {
        double min = 0;
        double max = 1;
    };

    explicit CurvePreview(QWidget* parent = nullptr);

    void setSeries(QVector<Series> series);
    void setRanges(Range x, Range y);
    void setLogarithmicX(bool on);
    void setDepth(bool on);
    void setAxisTitles(const QString& x, const QString& y);
    void setGridSteps(int xSteps, int ySteps);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPointF map(const QPointF& value, const QRectF& plot, int depthIndex) const;
    double xFraction(double x) const;
    void drawFrame(QPainter& painter, const QRectF& plot) const;
    void drawSeries(QPainter& painter, const QRectF& plot) const;

    QVector<Series> series_;
    Range x_;
    Range y_;
    bool logX_ = false;
    bool depth_ = false;
    QString xTitle_;
    QString yTitle_;
    int xSteps_ = 8;
    int ySteps_ = 5;
};

}  // namespace sonalyx
