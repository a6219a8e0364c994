// Benchmarks of a step in a folder of data that is made once and used by many.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>

namespace kelvrane::bench {

template <typename Folder>
using FolderStep = std::type_identity_t<std::function<void(const Folder&)>>;

/// Measures the step after the preparation, in a folder that is entered first. The name gets the
/// number of rows behind it.
template <typename Folder>
void AddStep(const std::shared_ptr<Folder>& folder, const std::string& name, int rows,
             int repetitions, const FolderStep<Folder>& prepare, const FolderStep<Folder>& step) {
    benchmark::RegisterBenchmark((name + '/' + std::to_string(rows)).c_str(),
                                 [folder, prepare, step](benchmark::State& state) {
                                     folder->enter();
                                     prepare(*folder);
                                     for (auto iteration : state) {
                                         static_cast<void>(iteration);
                                         step(*folder);
                                     }
                                 })
        ->UseRealTime()
        ->Repetitions(repetitions)
        ->MinTime(0.1);
}

} // namespace kelvrane::bench
