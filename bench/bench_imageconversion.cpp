// ConvertVorImageToQImage on a 2448 x 2048 camera picture, for each kind of
// picture the window shows, each beside memcpy of the same number of bytes as
// the converted QImage holds. Two copies are measured: into a buffer allocated
// once (bandwidth alone), and into a buffer allocated afresh every time, which
// is what any call that returns a new picture pays for its memory.
//
//   build/bench/bench_imageconversion [--benchmark_filter=...]

#include <KESImageWnd.h>

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>

#include <cstring>
#include <memory>

namespace {

constexpr int kWidth = 2448;
constexpr int kHeight = 2048;

cv::Mat randomPicture(int type)
{
    cv::Mat mat(kHeight, kWidth, type);
    cv::RNG rng(0x2448u + unsigned(type));
    rng.fill(mat, cv::RNG::UNIFORM, 0, CV_MAT_DEPTH(type) == CV_8U ? 256 : 65536);
    return mat;
}

size_t convertedBytes(int type)
{
    VorImage image(randomPicture(type));
    return size_t(ConvertVorImageToQImage(&image).sizeInBytes());
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
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
    state.counters["MB"] = double(bytes) / 1e6;
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
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
    state.counters["MB"] = double(bytes) / 1e6;
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
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
    state.counters["MB"] = double(bytes) / 1e6;
}

#define KES_PICTURE_BENCHMARKS(name, type) \
    BENCHMARK_CAPTURE(Convert, name, type)->Unit(benchmark::kMillisecond);   \
    BENCHMARK_CAPTURE(MemcpyPreallocated, name, type)->Unit(benchmark::kMillisecond); \
    BENCHMARK_CAPTURE(MemcpyFreshTarget, name, type)->Unit(benchmark::kMillisecond);

KES_PICTURE_BENCHMARKS(gray8, CV_8UC1)
KES_PICTURE_BENCHMARKS(colour8, CV_8UC3)
KES_PICTURE_BENCHMARKS(gray16, CV_16UC1)
KES_PICTURE_BENCHMARKS(colour16, CV_16UC3)

} // namespace

BENCHMARK_MAIN();
