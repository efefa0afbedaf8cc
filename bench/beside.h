// Two pieces of work side by side in one run, and work that grows: what ./run-bench makes its tables of.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// How many seconds the work takes, by the wall clock.
template <typename Work>
double Seconds(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The quantile: the value below which that share of the values lies.
inline double Quantile(std::vector<double> values, double share) {
  std::ranges::sort(values);
  return values[static_cast<std::size_t>(std::lround(share * static_cast<double>(values.size() - 1)))];
}
inline double Median(const std::vector<double>& values) { return Quantile(values, 0.5); }

/// The limit that the ratio of a comparison must keep.
struct Goal {
  enum class Kind { None, AtMost, TimesFaster } kind = Kind::None;
  double ratio = 0;
};
/// Ours takes at most so many times as long as theirs.
inline Goal AtMost(double ratio) { return {Goal::Kind::AtMost, ratio}; }
/// Theirs takes at least so many times as long as ours.
inline Goal TimesFaster(double ratio) { return {Goal::Kind::TimesFaster, ratio}; }

/// One row of the table.
struct Row {
  std::string operation;
  std::string peer;
  Goal goal;
  int rounds = 11;
};

/// Ours, theirs, ours, theirs: as many rounds as the row says, after one that isn't counted. Both give the
/// seconds that they took. The medians, their ratio and its noise become the benchmark's counters; the noise
/// is half the distance between the quartiles of the rounds' own ratios, in per cent.
inline void Beside(benchmark::State& state, const Row& row, const std::function<double()>& ours,
                   const std::function<double()>& theirs) {
  std::vector<double> our_times, their_times, ratios;
  for (auto _ : state) {
    for (int round = -1; round < row.rounds; ++round) {
      const double our_time = ours(), their_time = theirs();
      if (round < 0) continue;
      our_times.push_back(our_time);
      their_times.push_back(their_time);
      ratios.push_back(our_time / their_time);
    }
    state.SetIterationTime(Median(our_times));
  }
  const double ratio = Median(our_times) / Median(their_times);
  const bool times_faster = row.goal.kind == Goal::Kind::TimesFaster;
  state.SetLabel("beside|" + row.operation + "|" + row.peer);
  state.counters["ours"] = Median(our_times);
  state.counters["theirs"] = Median(their_times);
  state.counters["ratio"] = times_faster ? 1 / ratio : ratio;
  state.counters["goal"] = row.goal.ratio;
  state.counters["times_faster"] = times_faster ? 1 : 0;
  state.counters["noise"] = 50 * (Quantile(ratios, 0.75) - Quantile(ratios, 0.25)) / Median(ratios);
}

/// A row for memory in use and its limit, in megabytes of 1,024 * 1,024 bytes.
inline void TellMegabytes(benchmark::State& state, const Row& row, double ours, double allowed) {
  state.SetLabel("beside|" + row.operation + "|" + row.peer);
  state.counters["ours"] = ours;
  state.counters["theirs"] = allowed;
  state.counters["ratio"] = ours / allowed;
  state.counters["goal"] = row.goal.ratio;
  state.counters["times_faster"] = state.counters["noise"] = 0;
  state.counters["megabytes"] = 1;
}

/// One point of work that grows: the median of the runs, after one that isn't counted, at a size.
inline void Grows(benchmark::State& state, const std::string& operation, const std::string& unit, double size,
                  int runs, const std::function<double()>& work) {
  std::vector<double> times;
  for (auto _ : state) {
    for (int run = -1; run < runs; ++run)
      if (const double time = work(); run >= 0 || runs == 1) times.push_back(time);
    state.SetIterationTime(Median(times));
  }
  state.SetLabel("grows|" + operation + "|" + unit);
  state.counters["size"] = size;
  state.counters["seconds"] = Median(times);
}

}  // namespace bench
