#include "Framework/UI/GWorld.h"
#include "GUI/DigiString.h"
#include "GUI/Graph.h"
#include "GUI/Stage.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <random>

namespace {

constexpr int kSeries = 6;
constexpr int kSecondsPerSample = 6;
constexpr Rect kChartFrame{.top = 0, .left = 0, .bottom = 262, .right = 744};

/// A chart as the main window sets it up, with samples that jump about as much as they can: few line pieces coincide.
std::unique_ptr<Graph> MakeChart(int samples) {
    auto chart = std::make_unique<Graph>(SPaneInfo{.width = kChartFrame.right, .height = kChartFrame.bottom});
    chart->set_ptRelativeTopLeft({.v = 15, .h = 80});
    chart->set_ptRelativeBottomRight({.v = 225, .h = 580});
    chart->get_Legend()->set_ptRelativeTopLeft({.v = 60, .h = 600});
    std::mt19937 random(1);
    std::uniform_real_distribution<float> value(0.0F, 20.0F);
    for (int i = 0; i < kSeries; ++i) {
        auto series = std::make_unique<Series>();
        series->set_lineThickness(2);
        series->set_seriesText("Recent Write MBPS");
        series->set_seriesColor({.red = static_cast<std::uint16_t>(10000 * i), .green = 0xC800, .blue = 0});
        for (int sample = 1; sample <= samples; ++sample) {
            GraphPoint point;
            point.set_xValue(static_cast<float>(sample * kSecondsPerSample));
            point.set_yValue(value(random));
            point.set_ptRadius(2);
            series->addPoints(point);
        }
        chart->addSeries(std::move(series));
    }
    chart->FitLegendToSeries();
    chart->set_constLine1Value(15.3F);
    chart->set_constLine2Value(17.1F);
    return chart;
}

/// Redraws the chart as a window does: composed off screen, copied to the port. Arguments: samples held, samples in
/// view, scale.
void ChartRedraw(benchmark::State& state) {
    Stage::iStage = Stage::kLive;
    const int samples = static_cast<int>(state.range(0));
    const std::unique_ptr<Graph> chart = MakeChart(samples);
    if (state.range(1) < samples) {
        chart->set_flagInfiniteX(0);
        chart->set_beginPoint(samples - static_cast<int>(state.range(1)));
        chart->set_endPoint(samples - 1);
    }
    GWorld screen(kChartFrame, static_cast<double>(state.range(2)));
    while (state.KeepRunning()) {
        chart->DrawInto(screen);
    }
}
BENCHMARK(ChartRedraw)
    ->Args({60, 60, 1})
    ->Args({60, 60, 2})
    ->Args({14400, 60, 1})
    ->Args({14400, 14400, 1})
    ->Args({100000, 60, 1})
    ->Args({100000, 100000, 1})
    ->Args({100000, 100000, 2})
    ->Unit(benchmark::kMillisecond);

void ReadoutRedraw(benchmark::State& state) {
    DigiString readout(SPaneInfo{.width = 126, .height = 25});
    readout.setStringValue("01:02:03");
    GWorld screen({.top = 0, .left = 0, .bottom = 25, .right = 126}, static_cast<double>(state.range(0)));
    while (state.KeepRunning()) {
        readout.DrawInto(screen);
    }
}
BENCHMARK(ReadoutRedraw)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
