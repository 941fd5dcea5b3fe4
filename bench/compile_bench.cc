// Times whole compiles of synthetic estates, from the configuration text to
// the written file set, and reports the process's peak memory.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "bench/synthetic_estate.h"
#include "driver/configuration.h"
#include "driver/fw_file.h"
#include "support/host_description.h"

namespace {

void BM_Compile(benchmark::State& state) {
  EstateSize size{8, static_cast<int>(state.range(0)) / 2, 200, static_cast<int>(state.range(0))};
  char pattern[] = "/tmp/fw_compile_bench_XXXXXX";
  std::string directory = mkdtemp(pattern);
  std::ofstream(directory + "/estate.conf") << EstateText(size);
  auto host = std::make_unique<HostDescription>();
  std::string error;
  if (!host->Parse(EstateHost(size), "estate.host", &error)) state.SkipWithError(error.c_str());
  Host::Use(std::move(host));
  if (chdir(directory.c_str()) != 0) state.SkipWithError("no temporary directory");
  int code = 0;
  for (auto _ : state) {
    Config = new Configuration(new FWFile(nullptr, "estate.conf"));
    code = Config->Parse();
    if (code == 0) code = Config->Compile("gate", std::cerr);
    delete Config;
    Config = nullptr;
  }
  if (code != 0) state.SkipWithError(("compile ended with " + std::to_string(code)).c_str());
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  state.counters["peak_MiB"] = usage.ru_maxrss / 1024.0;
  std::system(("rm -rf " + directory).c_str());
}

BENCHMARK(BM_Compile)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
