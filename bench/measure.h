// Timing helpers shared by the benchmarks: run an action many times, report median and p99.
#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QString>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

struct Figures {
    double median;  // microseconds
    double p99;
};

inline Figures Measure(int runs, const std::function<void(int)>& action) {
    std::vector<double> micros;
    micros.reserve(runs);
    QElapsedTimer timer;
    for (int i = 0; i < runs; ++i) {
        timer.start();
        action(i);
        micros.push_back(timer.nsecsElapsed() / 1000.0);
    }
    std::sort(micros.begin(), micros.end());
    return {micros[micros.size() / 2],
            micros[std::min(micros.size() - 1, micros.size() * 99 / 100)]};
}

inline void Print(const char* what, int runs, Figures f) {
    std::printf("%-52s %7d runs   median %8.1f us   p99 %8.1f us\n", what, runs, f.median, f.p99);
}

inline void PrintMs(const char* what, int runs, Figures f) {
    std::printf("%-58s %4d runs   median %8.2f ms   p99 %8.2f ms\n", what, runs, f.median / 1000,
                f.p99 / 1000);
}

// This process's resident memory now, and at its peak since the last ResetPeakMemory, in KiB.
inline long MemoryKilobytes(const char* field) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(field)) {
            return line.mid(int(qstrlen(field))).trimmed().split(' ').first().toLong();
        }
    }
    return 0;
}
inline long ResidentKilobytes() {
    return MemoryKilobytes("VmRSS:");
}
inline long PeakKilobytes() {
    return MemoryKilobytes("VmHWM:");
}
inline void ResetPeakMemory() {
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly)) clear.write("5");
}

// The decoding benchmarks (bench_decode.cpp), with the program's files in folder.
void RunDecodingBenchmarks(const QString& folder);

// The output pane with clipboard-sized text (bench_pane.cpp); program is this benchmark's
// own path, run again as "peer INDEX SIZE" for one run of the peer that can be stopped.
int RunPaneBench(const char* program);
int RunPanePeer(int index, long long size);
// The MIDI output benchmarks (bench_device.cpp).
void RunDeviceBenchmarks();
// The file benchmarks (bench_files.cpp), with their files in folder.
void RunFileBenchmarks(const QString& folder);
// The picture import and undo benchmarks (bench_pictures.cpp).
namespace lumidot {
struct Platform;
}
void RunPictureBenchmarks(lumidot::Platform& platform, const QString& folder);
