#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "support/server_process.h"
#include "tvx/base/strings.h"
#include "tvx/headless/message_loop.h"
#include "tvx/network/curl_network.h"
#include "tvx/transfer/ftp_client.h"

/// Files to and from a server on this machine (vsftpd), beside what curl itself needs for the same.
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

void write_file(const fs::path& path, std::size_t bytes) {
  std::ofstream file(path, std::ios::binary);
  const std::string block(65536, 'x');
  for (std::size_t left = bytes; left > 0; left -= std::min(left, block.size()))
    file.write(block.data(), static_cast<std::streamsize>(std::min(left, block.size())));
}

/// The server and its folders, as long as the program runs.
struct Server {
  Server() {
    fs::create_directories(remote);
    fs::create_directories(folder / "many");
    fs::create_directories(folder / "local");
    const char* user = getuid() == 0 ? "root" : std::getenv("USER");
    std::ofstream(folder / "config")
        << "listen=YES\nlisten_address=127.0.0.1\nlisten_port=" << port
        << "\nrun_as_launching_user=YES\nbackground=NO\nanonymous_enable=YES\nlocal_enable=NO\nno_anon_"
           "password=YES\n"
           "ftp_username="
        << (user ? user : "nobody") << "\nanon_root=" << folder.string()
        << "\nwrite_enable=YES\nanon_upload_enable=YES\nanon_other_write_enable=YES\nanon_world_readable_"
           "only=NO\n"
           "connect_from_port_20=NO\nseccomp_sandbox=NO\nxferlog_enable=NO\nsecure_chroot_dir="
        << remote.string() << "\nallow_writeable_chroot=YES\n";
    for (const std::size_t size : {10'000UL, 1'000'000UL, 100'000'000UL})
      write_file(folder / "local" / std::to_string(size), size);
    fs::copy(folder / "local", remote, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    for (int i = 0; i < 10'000; ++i)
      write_file(folder / "many" / ("picture " + std::to_string(i) + ".gif"), 1);
    process = std::make_unique<tvx::ServerProcess>(
        std::vector<std::string>{"/usr/sbin/vsftpd", (folder / "config").string()});
    running = tvx::wait_for_port(port);
  }
  ~Server() {
    process.reset();
    fs::remove_all(folder);
  }

  const fs::path folder = fs::temp_directory_path() / ("tvx-transfer-bench-" + std::to_string(getpid()));
  const fs::path remote = folder / "remote";
  const int port = tvx::free_port();
  std::unique_ptr<tvx::ServerProcess> process;
  bool running = false;
};

Server& server() {
  static Server one;
  return one;
}

/// How long the message loop stood still at most.
class Stall {
 public:
  explicit Stall(tvx::headless::MessageLoop& loop) : loop_(loop) { turn(); }
  ~Stall() { loop_.cancel(next_); }
  double milliseconds() const { return longest_ * 1000; }

 private:
  void turn() {
    longest_ = std::max(longest_, seconds_since(last_));
    last_ = Clock::now();
    next_ = loop_.post_delayed(1, [this] { turn(); });
  }
  tvx::headless::MessageLoop& loop_;
  Clock::time_point last_ = Clock::now();
  double longest_ = 0;
  tvx::platform::TimerId next_{};
};

struct Client {
  explicit Client(std::int32_t block_size) {
    client.Host = u"ftp://127.0.0.1:" + tvx::to_text(server().port);
    client.UserName = u"anonymous";
    client.Passive = true;
    client.BlockSize = block_size;
    connected = server().running && client.Connect();
  }
  ~Client() { client.Disconnect(); }

  tvx::headless::MessageLoop loop;
  tvx::network::CurlNetwork network{loop};
  tvx::transfer::FTPEvents nobody;
  tvx::transfer::clsFTP client{{.network = network, .loop = loop}, nobody};
  bool connected = false;
};

std::u16string text(const fs::path& path) { return tvx::from_utf8(path.string()); }

double peak_megabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

/// What curl needs for the same, with its own start taken off: the time that it measures itself.
double curl_seconds(const std::string& arguments) {
  const fs::path out = server().folder / "curl.txt";
  const std::string command = "curl -s -w '%{time_total}' " + arguments + " > " + out.string();
  if (std::system(command.c_str()) != 0) return 0;
  double seconds = 0;
  std::ifstream(out) >> seconds;
  return seconds;
}

void move(benchmark::State& state, bool up) {
  const auto size = static_cast<std::size_t>(state.range(0));
  Client on(static_cast<std::int32_t>(state.range(1)));
  if (!on.connected) return state.SkipWithError("there is no vsftpd");
  const double memory = peak_megabytes();
  const std::string name = std::to_string(size);
  const std::string url =
      "ftp://127.0.0.1:" + std::to_string(server().port) + "/%2F" + server().remote.string().substr(1) + "/";
  double own = 0, curls = 0, stall = 0;
  for ([[maybe_unused]] auto turn : state) {
    curls += curl_seconds(up ? "-T " + (server().folder / "local" / name).string() + " " + url + "by-curl"
                             : "-o " + (server().folder / "by-curl").string() + " " + url + name);
    const Stall watch(on.loop);
    const auto start = Clock::now();
    const bool moved =
        up ? on.client.PutFileProgress(text(server().remote / "up"), text(server().folder / "local" / name))
           : on.client.GetFileProgress(text(server().folder / "down"), text(server().remote / name));
    const double seconds = seconds_since(start);
    if (!moved) return state.SkipWithError("the transfer failed");
    state.SetIterationTime(seconds);
    own += seconds;
    stall = std::max(stall, watch.milliseconds());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
  state.counters["of_curls_speed"] = own > 0 ? curls / own : 0;
  state.counters["longest_stall_ms"] = stall;
  state.counters["memory_grown_MB"] = peak_megabytes() - memory;
}

void upload(benchmark::State& state) { move(state, true); }
void download(benchmark::State& state) { move(state, false); }

constexpr int small = 1'000'000, large = 100'000'000;
BENCHMARK(upload)->Args({small, 65536})->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(upload)->Args({large, 65536})->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(download)->Args({small, 65536})->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(download)->Args({large, 65536})->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
// At the default the rests between blocks bound the speed.
BENCHMARK(upload)->Args({10'000, 100})->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(download)->Args({10'000, 100})->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void thousand_small_files(benchmark::State& state, bool up) {
  Client on(65536);
  if (!on.connected) return state.SkipWithError("there is no vsftpd");
  Stall watch(on.loop);
  const std::u16string local = text(server().folder / "local" / "10000");
  for ([[maybe_unused]] auto turn : state)
    for (int i = 0; i < 1000; ++i) {
      const bool moved =
          up ? on.client.PutFileProgress(text(server().remote / "small") + tvx::to_text(i), local)
             : on.client.GetFileProgress(text(server().folder / "down"), text(server().remote / "10000"));
      if (!moved) return state.SkipWithError("the transfer failed");
    }
  state.SetItemsProcessed(1000 * state.iterations());
  state.counters["longest_stall_ms"] = watch.milliseconds();
}
BENCHMARK_CAPTURE(thousand_small_files, up, true)
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(thousand_small_files, down, false)
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

void listing_of_ten_thousand(benchmark::State& state) {
  Client on(65536);
  if (!on.connected) return state.SkipWithError("there is no vsftpd");
  for ([[maybe_unused]] auto turn : state)
    if (!on.client.GetDirectoryListing(text(server().folder / "many") + u"/*.*") ||
        on.client.Directory()->count() != 10'000)
      return state.SkipWithError("the listing failed");
}
BENCHMARK(listing_of_ten_thousand)->UseRealTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
