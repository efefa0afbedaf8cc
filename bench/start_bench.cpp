// From the start of the process to its painted window, on the display that is there, beside a bare window of
// the toolkit.
#include "bench/beside.h"
#include "bench/programs.h"

namespace {

void StartToWindow(benchmark::State& state) {
  bench::Beside(
      state, {"Start to painted window, host embedded", "a bare window of the toolkit", bench::AtMost(2), 21},
      [] { return bench::Seconds([] { bench::RunProgram("start-ours"); }); },
      [] { return bench::Seconds([] { bench::RunProgram("start-bare"); }); });
}
BENCHMARK(StartToWindow)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
