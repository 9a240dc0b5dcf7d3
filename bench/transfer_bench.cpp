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
#include <vector>

#include "support/server_process.h"
#include "tvx/base/strings.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/message_loop.h"
#include "tvx/network/curl_network.h"
#include "tvx/transfer/ftp_client.h"
#include "tvx/transfer/library_dialog.h"

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

/// Where there is a folder in memory the disk has no say: it would be measured twice, once for curl.
fs::path folder_for_files() {
  const fs::path memory = "/dev/shm";
  return access(memory.c_str(), W_OK) == 0 ? memory : fs::temp_directory_path();
}

/// The server and its folders, as long as the program runs.
struct Server {
  Server() {
    fs::create_directories(remote);
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
    process = std::make_unique<tvx::ServerProcess>(
        std::vector<std::string>{"/usr/sbin/vsftpd", (folder / "config").string()});
    running = tvx::wait_for_port(port);
  }
  ~Server() {
    process.reset();
    fs::remove_all(folder);
  }
  std::string url() const {
    return "ftp://127.0.0.1:" + std::to_string(port) + "/%2F" + remote.string().substr(1) + "/";
  }

  const fs::path folder = folder_for_files() / ("tvx-transfer-bench-" + std::to_string(getpid()));
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

/// The processor's time of this program, or of those that it has started and that have ended.
double processor_seconds(int whose) {
  rusage usage{};
  getrusage(whose, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

struct Cost {
  double seconds = 0, processor = 0;
};

Cost cost_of_command(const std::string& command, const fs::path& out) {
  const double before = processor_seconds(RUSAGE_CHILDREN);
  if (std::system((command + " > " + out.string()).c_str()) != 0) return {};
  Cost cost{.processor = processor_seconds(RUSAGE_CHILDREN) - before};
  std::ifstream times(out);
  for (double seconds = 0; times >> seconds;) cost.seconds += seconds;
  return cost;
}

/// What curl needs for the same. Its own start isn't counted.
Cost cost_of_curl(const std::string& arguments) {
  static const double start = cost_of_command("curl -V", "/dev/null").processor;
  Cost cost = cost_of_command("curl -s -w '%{time_total}\\n' " + arguments, server().folder / "curl-seconds");
  cost.processor = std::max(cost.processor - start, 0.0);
  return cost;
}

/// The same done by turns, so that both meet the same load of the machine. What counts is the middle of the
/// ratios: another program may hold up one of the two in any turn.
class Comparison {
 public:
  void add(const Cost& own, const Cost& curls) {
    if (own.seconds > 0) speeds_.push_back(curls.seconds / own.seconds);
    if (curls.processor > 0) processor_.push_back(own.processor / curls.processor);
  }
  void tell(benchmark::State& state) {
    state.counters["of_curls_speed"] = middle(speeds_);
    state.counters["of_curls_cpu"] = middle(processor_);
  }

 private:
  static double middle(std::vector<double>& values) {
    if (values.empty()) return 0;
    std::ranges::sort(values);
    return values[values.size() / 2];
  }
  std::vector<double> speeds_, processor_;
};

template <class Work>
Cost cost_of(Work&& work) {
  const double processor = processor_seconds(RUSAGE_SELF);
  const auto start = Clock::now();
  work();
  return {seconds_since(start), processor_seconds(RUSAGE_SELF) - processor};
}

void move(benchmark::State& state, bool up) {
  const auto size = static_cast<std::size_t>(state.range(0));
  Client on(static_cast<std::int32_t>(state.range(1)));
  if (!on.connected) return state.SkipWithError("there is no vsftpd");
  const double memory = peak_megabytes();
  const std::string name = std::to_string(size);
  const fs::path local = server().folder / "local" / name;
  Comparison comparison;
  double stall = 0;
  for ([[maybe_unused]] auto turn : state) {
    const Cost curls =
        cost_of_curl(up ? "-T " + local.string() + " " + server().url() + "by-curl"
                        : "-o " + (server().folder / "by-curl").string() + " " + server().url() + name);
    const Stall watch(on.loop);
    bool moved = false;
    const Cost own = cost_of([&] {
      moved = up ? on.client.PutFileProgress(text(server().remote / "up"), text(local))
                 : on.client.GetFileProgress(text(server().folder / "down"), text(server().remote / name));
    });
    if (!moved) return state.SkipWithError("the transfer failed");
    state.SetIterationTime(own.seconds);
    comparison.add(own, curls);
    stall = std::max(stall, watch.milliseconds());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
  comparison.tell(state);
  state.counters["longest_stall_ms"] = stall;
  state.counters["memory_grown_MB"] = peak_megabytes() - memory;
}

void upload(benchmark::State& state) { move(state, true); }
void download(benchmark::State& state) { move(state, false); }

constexpr int small = 1'000'000, large = 100'000'000;
BENCHMARK(upload)->Args({small, 65536})->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(upload)->Args({large, 65536})->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(download)->Args({small, 65536})->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(download)->Args({large, 65536})->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
// At the default the rests between blocks bound the speed.
BENCHMARK(upload)->Args({10'000, 100})->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(download)->Args({10'000, 100})->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

constexpr int many = 1000;

/// curl's orders for them, all over one connection.
fs::path orders_for_curl(bool up) {
  fs::path orders = server().folder / "orders";
  std::ofstream file(orders);
  for (int i = 0; i < many; ++i) {
    const std::string name = "by-curl" + std::to_string(i);
    if (up) {
      file << "upload-file = \"" << (server().folder / "local" / "10000").string() << "\"\nurl = \""
           << server().url() << name << "\"\n";
    } else {
      file << "output = \"" << (server().folder / "by-curl").string() << "\"\nurl = \"" << server().url()
           << "10000\"\n";
    }
  }
  return orders;
}

void thousand_small_files(benchmark::State& state, bool up) {
  Client on(65536);
  if (!on.connected) return state.SkipWithError("there is no vsftpd");
  const std::u16string local = text(server().folder / "local" / "10000");
  const std::string orders = "-K " + orders_for_curl(up).string();
  Comparison comparison;
  double stall = 0;
  for ([[maybe_unused]] auto turn : state) {
    const Cost curls = cost_of_curl(orders);
    const Stall watch(on.loop);
    bool moved = true;
    const Cost own = cost_of([&] {
      for (int i = 0; i < many && moved; ++i)
        moved =
            up ? on.client.PutFileProgress(text(server().remote / "small") + tvx::to_text(i), local)
               : on.client.GetFileProgress(text(server().folder / "down"), text(server().remote / "10000"));
    });
    if (!moved) return state.SkipWithError("the transfer failed");
    state.SetIterationTime(own.seconds);
    comparison.add(own, curls);
    stall = std::max(stall, watch.milliseconds());
  }
  state.SetItemsProcessed(many * state.iterations());
  comparison.tell(state);
  state.counters["longest_stall_ms"] = stall;
}
BENCHMARK_CAPTURE(thousand_small_files, up, true)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(thousand_small_files, down, false)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

/// A folder with so many pictures, as long as it is looked at.
class FullFolder {
 public:
  explicit FullFolder(int pictures) {
    fs::create_directories(path);
    for (int i = 0; i < pictures; ++i) write_file(path / ("picture " + std::to_string(i) + ".gif"), 1);
  }
  ~FullFolder() { fs::remove_all(path); }
  const fs::path path = server().folder / "many";
};

void listing_of_ten_thousand(benchmark::State& state) {
  Client on(65536);
  if (!on.connected) return state.SkipWithError("there is no vsftpd");
  const FullFolder folder(10'000);
  const std::string of_folder = "-o /dev/null ftp://127.0.0.1:" + std::to_string(server().port) + "/%2F" +
                                folder.path.string().substr(1) + "/";
  Comparison comparison;
  for ([[maybe_unused]] auto turn : state) {
    const Cost curls = cost_of_curl(of_folder);
    bool listed = false;
    const Cost own = cost_of([&] { listed = on.client.GetDirectoryListing(text(folder.path) + u"/*.*"); });
    if (!listed || on.client.Directory()->count() != 10'000) return state.SkipWithError("the listing failed");
    state.SetIterationTime(own.seconds);
    comparison.add(own, curls);
  }
  comparison.tell(state);
}
BENCHMARK(listing_of_ten_thousand)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

struct NoOpener : tvx::transfer::LibraryEvents {
  void ImageInserted(const std::u16string&) override {}
};

/// When the library of remote pictures shows its first row and when its last, from the press of its button:
/// with the connection, and with all that the user may do meanwhile.
void library_of_ten_thousand(benchmark::State& state) {
  if (!server().running) return state.SkipWithError("there is no vsftpd");
  const FullFolder folder(10'000);
  tvx::headless::MessageLoop loop;
  tvx::headless::Dialogs dialogs;
  tvx::network::CurlNetwork network(loop);
  NoOpener opener;
  double last_row = 0, stall = 0;
  for ([[maybe_unused]] auto turn : state) {
    tvx::transfer::frmLibraryImage library({.network = network, .loop = loop}, dialogs,
                                           tvx::platform::WindowHandle::none, opener);
    library.Host = u"ftp://127.0.0.1:" + tvx::to_text(server().port);
    library.UserName = u"anonymous";
    library.InitDir = text(folder.path);
    library.Passive = true;
    library.BlockSize = 65536;
    const tvx::platform::ListView& rows = library.form().Controls(u"lstImage").list_view();
    const auto start = Clock::now();
    double first_row = 0;
    const std::function<void()> look = [&] {
      if (rows.count() > 0)
        first_row = seconds_since(start);
      else
        loop.post_delayed(1, look);
    };
    loop.post(look);
    const Stall watch(loop);
    library.Connect();
    last_row += seconds_since(start);
    if (rows.count() != 10'000) return state.SkipWithError("the listing failed");
    state.SetIterationTime(first_row);
    stall = std::max(stall, watch.milliseconds());
  }
  state.counters["last_row_ms"] = last_row * 1000 / static_cast<double>(state.iterations());
  state.counters["longest_stall_ms"] = stall;
}
BENCHMARK(library_of_ten_thousand)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
