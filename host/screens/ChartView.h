// A chart of a report on the screen, drawn as it is on paper.
#pragma once

#include "reports/ChartPainter.h"

#include <QWidget>

namespace tallyroom::host {

// As high as the chart needs for its width.
class ChartView : public QWidget {
    Q_OBJECT

public:
    explicit ChartView(QWidget* parent = nullptr) : QWidget(parent) {}

    void setChart(Chart chart);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    ChartPainter painter() const;
    void takeHeight();

    Chart m_chart;
};

} // namespace tallyroom::host
