// What the picture library itself needs for a photograph: a full-size decode, and a decode down to
// a thumbnail. The real program is measured against these.
//
// usage: picture_bench [--benchmark_... options] FILE...
#include <benchmark/benchmark.h>

#include <QImage>
#include <QImageReader>
#include <QString>
#include <string>
#include <vector>

namespace {

constexpr QSize ThumbnailBox(109, 100);  // that of the picture dialog

QImage Decode(const std::string& path, bool thumbnail) {
    QImageReader reader(QString::fromLocal8Bit(path.c_str()));
    if (thumbnail) reader.setScaledSize(reader.size().scaled(ThumbnailBox, Qt::KeepAspectRatio));
    return reader.read();
}

// One iteration decodes every file once. The library may share a conversion out to threads of its
// own, so the time is that of the process.
void DecodeAll(benchmark::State& state, const std::vector<std::string>& files, bool thumbnail) {
    for (auto _ : state) {
        for (const std::string& file : files) {
            const QImage image = Decode(file, thumbnail);
            if (image.isNull()) {
                state.SkipWithError(("no picture: " + file).c_str());
                return;
            }
            benchmark::DoNotOptimize(image.constBits());
        }
    }
    state.counters["files"] = double(files.size());
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const std::vector<std::string> files(argv + 1, argv + argc);
    if (files.empty()) return 2;
    QImageReader::setAllocationLimit(1024);
    Decode(files.front(), true);  // loads the plugin
    benchmark::RegisterBenchmark("FullDecode", DecodeAll, files, false)
        ->Iterations(1)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ThumbnailDecode", DecodeAll, files, true)
        ->Iterations(1)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
