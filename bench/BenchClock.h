// BenchClock.h - the one clock every benchmark reads: seconds on a steady
// clock, for differences only.
//
//   const double start = bench::Seconds();
#pragma once

#include <chrono>

namespace bench {

inline double Seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace bench
