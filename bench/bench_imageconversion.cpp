// ConvertVorImageToQImage on 2448 x 2048 camera pictures, for each kind of
// picture the window shows, beside memcpy of the same number of bytes as the
// converted QImage holds and beside OpenCV's cv::cvtColor to the same 32-bit
// layout (blue, green, red, 255 in memory).
//
// Warm: one picture converted again and again (it stays in the caches as far
// as it fits). Cold: a different frame every time, from a pool larger than the
// caches, as a camera delivers them; the window's loads write into the buffers
// of the picture before last ("recycled"), while "fresh" allocates a new
// picture per frame. Gray pictures also show the conversion with the 32-bit
// form that painting draws ("+paint"), which the window makes at each load.
// OpenCV runs cvtColor on its own worker threads; "one_thread" holds it to
// one, as the window's conversion is. At the end the ratios of the same run
// are printed.
//
//   build/bench/bench_imageconversion [--benchmark_filter=...]

#include <KESImageWnd.h>

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kWidth = 2448;
constexpr int kHeight = 2048;
// Frames in the cold pool: 8 gray frames are 40 MB, 8 colour ones 120 MB.
constexpr int kColdFrames = 8;

cv::Mat randomPicture(int type, unsigned seed = 0)
{
    cv::Mat mat(kHeight, kWidth, type);
    cv::RNG rng(0x2448u + unsigned(type) + seed * 7919u);
    rng.fill(mat, cv::RNG::UNIFORM, 0, CV_MAT_DEPTH(type) == CV_8U ? 256 : 65536);
    return mat;
}

std::vector<cv::Mat> coldPool(int type)
{
    std::vector<cv::Mat> pool;
    for (int i = 0; i < kColdFrames; ++i)
        pool.push_back(randomPicture(type, unsigned(i) + 1));
    return pool;
}

size_t convertedBytes(int type)
{
    // The 32-bit form painting draws: four bytes a pixel for every kind.
    return size_t(kWidth) * size_t(kHeight) * (CV_MAT_CN(type) == 3 ? 4 : 1);
}

void setBytes(benchmark::State& state, size_t bytes)
{
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
    state.counters["MB"] = double(bytes) / 1e6;
}

void Convert(benchmark::State& state, int type)
{
    VorImage image(randomPicture(type));
    size_t bytes = 0;
    for (auto _ : state) {
        QImage converted = ConvertVorImageToQImage(&image);
        benchmark::DoNotOptimize(converted.constBits());
        bytes = size_t(converted.sizeInBytes());
    }
    setBytes(state, bytes);
}

// A different frame each time, into a new picture each time.
void ConvertColdFresh(benchmark::State& state, int type)
{
    std::vector<cv::Mat> pool = coldPool(type);
    size_t next = 0;
    size_t bytes = 0;
    for (auto _ : state) {
        VorImage image(pool[next++ % pool.size()]);
        QImage converted = ConvertVorImageToQImage(&image);
        benchmark::DoNotOptimize(converted.constBits());
        bytes = size_t(converted.sizeInBytes());
    }
    setBytes(state, bytes);
}

// A different frame each time, written over the buffer of the frame before
// last, as the window's loads do; with paintForm, the 32-bit form as well.
void ConvertColdRecycled(benchmark::State& state, int type, bool paintForm)
{
    std::vector<cv::Mat> pool = coldPool(type);
    size_t next = 0;
    QImage pictures[2];
    QImage paints[2];
    size_t bytes = 0;
    for (auto _ : state) {
        VorImage image(pool[next % pool.size()]);
        QImage& picture = pictures[next % 2];
        picture = ConvertVorImageToQImage(&image, std::move(picture));
        bytes = size_t(picture.sizeInBytes());
        if (paintForm) {
            QImage& paint = paints[next % 2];
            paint = ConvertIndexedToPaintImage(picture, std::move(paint));
            bytes = size_t(paint.sizeInBytes());
            benchmark::DoNotOptimize(paint.constBits());
        }
        benchmark::DoNotOptimize(picture.constBits());
        ++next;
    }
    setBytes(state, bytes);
}

// OpenCV's own conversion of a different frame each time to blue, green, red,
// 255, into a matrix that it reuses; 16-bit frames first scaled to 8 bits.
// OpenCV spreads it over its worker threads unless told to use one; the
// window's conversion runs on the one thread that loads the picture.
void CvtColorCold(benchmark::State& state, int type, int threads)
{
    const int threadsBefore = cv::getNumThreads();
    if (threads > 0)
        cv::setNumThreads(threads);
    std::vector<cv::Mat> pool = coldPool(type);
    const int code = CV_MAT_CN(type) == 3 ? cv::COLOR_BGR2BGRA : cv::COLOR_GRAY2BGRA;
    size_t next = 0;
    cv::Mat eightBit;
    // Two outputs in turn, as the window keeps the frame on show while it
    // converts the next.
    cv::Mat outputs[2];
    for (auto _ : state) {
        cv::Mat& out = outputs[next % 2];
        const cv::Mat& frame = pool[next++ % pool.size()];
        if (CV_MAT_DEPTH(type) == CV_8U) {
            cv::cvtColor(frame, out, code);
        } else {
            frame.convertTo(eightBit, CV_8U, 255.0 / 65535.0);
            cv::cvtColor(eightBit, out, code);
        }
        benchmark::DoNotOptimize(out.data);
    }
    setBytes(state, outputs[0].total() * outputs[0].elemSize());
    cv::setNumThreads(threadsBefore);
}

// memcpy of the 32-bit form's bytes from a different frame each time into a
// buffer allocated once.
void MemcpyCold(benchmark::State& state, int type)
{
    const size_t bytes = size_t(kWidth) * size_t(kHeight) * 4;
    std::vector<std::unique_ptr<uchar[]>> sources;
    for (int i = 0; i < kColdFrames; ++i) {
        sources.emplace_back(new uchar[bytes]);
        cv::Mat sourceBytes(1, int(bytes), CV_8U, sources.back().get());
        cv::randu(sourceBytes, 0, 256);
    }
    std::unique_ptr<uchar[]> target(new uchar[bytes]);
    std::memset(target.get(), 0, bytes);
    size_t next = 0;
    for (auto _ : state) {
        std::memcpy(target.get(), sources[next++ % sources.size()].get(), bytes);
        benchmark::DoNotOptimize(target.get());
        benchmark::ClobberMemory();
    }
    setBytes(state, bytes);
    (void)type;
}

void MemcpyPreallocated(benchmark::State& state, int type)
{
    const size_t bytes = convertedBytes(type);
    std::unique_ptr<uchar[]> source(new uchar[bytes]);
    std::unique_ptr<uchar[]> target(new uchar[bytes]);
    cv::Mat sourceBytes(1, int(bytes), CV_8U, source.get());
    cv::randu(sourceBytes, 0, 256);
    std::memset(target.get(), 0, bytes);
    for (auto _ : state) {
        std::memcpy(target.get(), source.get(), bytes);
        benchmark::DoNotOptimize(target.get());
        benchmark::ClobberMemory();
    }
    setBytes(state, bytes);
}

void MemcpyFreshTarget(benchmark::State& state, int type)
{
    const size_t bytes = convertedBytes(type);
    std::unique_ptr<uchar[]> source(new uchar[bytes]);
    cv::Mat sourceBytes(1, int(bytes), CV_8U, source.get());
    cv::randu(sourceBytes, 0, 256);
    for (auto _ : state) {
        // QImage allocates its pixels the same way: uninitialised, from malloc.
        std::unique_ptr<uchar[]> target(new uchar[bytes]);
        std::memcpy(target.get(), source.get(), bytes);
        benchmark::DoNotOptimize(target.get());
        benchmark::ClobberMemory();
    }
    setBytes(state, bytes);
}

#define KES_PICTURE_BENCHMARKS(name, type)                                                       \
    BENCHMARK_CAPTURE(Convert, name, type)->Unit(benchmark::kMillisecond);                       \
    BENCHMARK_CAPTURE(ConvertColdFresh, name, type)->Unit(benchmark::kMillisecond);              \
    BENCHMARK_CAPTURE(ConvertColdRecycled, name, type, false)->Unit(benchmark::kMillisecond);    \
    BENCHMARK_CAPTURE(CvtColorCold, name, type, 0)->Unit(benchmark::kMillisecond);               \
    BENCHMARK_CAPTURE(CvtColorCold, name##_one_thread, type, 1)->Unit(benchmark::kMillisecond);  \
    BENCHMARK_CAPTURE(MemcpyCold, name, type)->Unit(benchmark::kMillisecond);                    \
    BENCHMARK_CAPTURE(MemcpyPreallocated, name, type)->Unit(benchmark::kMillisecond);            \
    BENCHMARK_CAPTURE(MemcpyFreshTarget, name, type)->Unit(benchmark::kMillisecond);

KES_PICTURE_BENCHMARKS(gray8, CV_8UC1)
KES_PICTURE_BENCHMARKS(colour8, CV_8UC3)
KES_PICTURE_BENCHMARKS(gray16, CV_16UC1)
KES_PICTURE_BENCHMARKS(colour16, CV_16UC3)
BENCHMARK_CAPTURE(ConvertColdRecycled, gray8_paint, CV_8UC1, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ConvertColdRecycled, gray16_paint, CV_16UC1, true)->Unit(benchmark::kMillisecond);

// The console report, remembering each benchmark's time for the ratios.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                times[run.benchmark_name()] = run.GetAdjustedRealTime();
        ConsoleReporter::ReportRuns(runs);
    }

    void printRatio(const std::string& label, const std::string& ours, const std::string& theirs) const
    {
        const auto a = times.find(ours);
        const auto b = times.find(theirs);
        if (a == times.end() || b == times.end() || b->second <= 0.0)
            return;
        std::printf("  %-44s %6.2f  (%s / %s)\n", label.c_str(), a->second / b->second, ours.c_str(),
                    theirs.c_str());
    }

    std::map<std::string, double> times;
};

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\nRatios of this run (below 1: ours is faster):\n");
    for (const char* kind : {"gray8", "colour8", "gray16", "colour16"}) {
        const std::string k(kind);
        reporter.printRatio(k + " cold recycled / cvtColor", "ConvertColdRecycled/" + k, "CvtColorCold/" + k);
        reporter.printRatio(k + " cold recycled / cvtColor on one thread", "ConvertColdRecycled/" + k,
                            "CvtColorCold/" + k + "_one_thread");
        reporter.printRatio(k + " cold fresh / cvtColor", "ConvertColdFresh/" + k, "CvtColorCold/" + k);
        reporter.printRatio(k + " cold recycled / memcpy of the 32-bit form", "ConvertColdRecycled/" + k,
                            "MemcpyCold/" + k);
        reporter.printRatio("cvtColor " + k + " / memcpy of the 32-bit form", "CvtColorCold/" + k,
                            "MemcpyCold/" + k);
    }
    reporter.printRatio("gray8 cold recycled, +paint / cvtColor", "ConvertColdRecycled/gray8_paint",
                        "CvtColorCold/gray8");
    reporter.printRatio("gray8 cold recycled, +paint / cvtColor on one thread", "ConvertColdRecycled/gray8_paint",
                        "CvtColorCold/gray8_one_thread");
    reporter.printRatio("gray16 cold recycled, +paint / cvtColor", "ConvertColdRecycled/gray16_paint",
                        "CvtColorCold/gray16");
    reporter.printRatio("gray16 cold recycled, +paint / cvtColor on one thread",
                        "ConvertColdRecycled/gray16_paint", "CvtColorCold/gray16_one_thread");
    benchmark::Shutdown();
    return 0;
}
