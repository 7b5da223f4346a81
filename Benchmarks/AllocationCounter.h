#pragma once

#include <cstdint>

#include <benchmark/benchmark.h>

namespace pictal {

/// How often this program has allocated memory so far. Every `operator new` of it counts.
[[nodiscard]] std::int64_t allocationCount();

/// Reports the allocations of an iteration beside its time, from here to the end of the scope.
class AllocationCounter {
  public:
    explicit AllocationCounter(benchmark::State& state) : state_(state) {}
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;
    ~AllocationCounter() {
        const auto count = static_cast<double>(allocationCount() - before_);
        state_.counters["allocations"] =
            benchmark::Counter(count, benchmark::Counter::kAvgIterations);
    }

  private:
    benchmark::State& state_;
    std::int64_t before_ = allocationCount();
};

}  // namespace pictal
