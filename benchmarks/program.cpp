// One source for all benchmark programs: BENCH_MEASUREMENT (runWhole, runAlpha, runLoops or runServices, in
// BENCH_MEASUREMENT_HEADER) of BENCH_LIBRARY (in BENCH_LIBRARY_HEADER).
#include BENCH_LIBRARY_HEADER
#include BENCH_MEASUREMENT_HEADER

int main(int argc, char** argv)
{
    return bench::BENCH_MEASUREMENT<bench::BENCH_LIBRARY>(argc, argv);
}
