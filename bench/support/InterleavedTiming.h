#pragma once
// Times our work and git's reference alternately, so that load from other processes on
// a shared machine falls on both sides alike; gives the two medians.
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "support/BenchSupport.h"

namespace Bench {

inline std::pair<double, double> interleavedMedianSeconds(const std::function<void()>& ours,
                                                          const std::function<void()>& reference, int runs = 9) {
  ours();  // warm-up: file cache and first-use costs
  reference();
  std::vector<double> oursTimes, referenceTimes;
  for (int i = 0; i < runs; ++i) {
    oursTimes.push_back(seconds(ours));
    referenceTimes.push_back(seconds(reference));
  }
  std::sort(oursTimes.begin(), oursTimes.end());
  std::sort(referenceTimes.begin(), referenceTimes.end());
  return {oursTimes[oursTimes.size() / 2], referenceTimes[referenceTimes.size() / 2]};
}

}  // namespace Bench
