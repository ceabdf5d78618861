// Starting, measuring and ending Chromium. One process of ours is above it: the first of the new process namespace. It
// makes the browser's world, starts the browser with an ordinary user's rights, and ends with it; its end ends all
// others. Test: tests/trial/Trial_test.cpp; with a real Chromium: tests/groups/trial.

#include "trial/Browser.h"

#include <dirent.h>
#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace trial {

namespace {

constexpr const char* kTemporarySize = "size=256m";  // profile, caches and shared memory of one browser
constexpr std::size_t kLastWords = 1000;

// An ordinary user for a browser that root starts.
struct User {
  uid_t user = 65534;
  gid_t group = 65534;
};

// Where Chromium finds its pipe.
constexpr int kCommands = 3;
constexpr int kAnswers = 4;

// Why the browser did not start, through a pipe that closes when it does.
[[noreturn]] void giveUp(int status, const char* step) {
  const std::string text = std::string(step) + ": " + std::strerror(errno);
  (void)!write(status, text.data(), text.size());
  _exit(1);
}

bool writeFile(const char* path, const std::string& text) {
  const int file = open(path, O_WRONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool isWritten = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  close(file);
  return isWritten;
}

// In a user namespace, the user stays who it is.
void keepUser(int status, uid_t user, gid_t group) {
  const std::string users = std::to_string(user) + " " + std::to_string(user) + " 1";
  const std::string groups = std::to_string(group) + " " + std::to_string(group) + " 1";
  if (!writeFile("/proc/self/setgroups", "deny") || !writeFile("/proc/self/uid_map", users) ||
      !writeFile("/proc/self/gid_map", groups)) {
    giveUp(status, "cannot map the user");
  }
}

// Hides what is the system's: temporary files, sockets of services, processes. What the system does not allow is left:
// it is a second wall only. Returns whether /tmp is the browser's own now.
bool makeWorld(const User& user) {
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  (void)mount("proc", "/proc", "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC, nullptr);
  const std::string options = std::string(kTemporarySize) + ",mode=0700,uid=" + std::to_string(user.user) +
                              ",gid=" + std::to_string(user.group);
  constexpr unsigned long kFlags = MS_NOSUID | MS_NODEV | MS_NOEXEC;
  (void)mount("none", "/dev/shm", "tmpfs", kFlags, options.c_str());
  (void)mount("none", "/run", "tmpfs", kFlags, "size=1m,mode=0755");
  return mount("none", "/tmp", "tmpfs", kFlags, options.c_str()) == 0;
}

void dropRights(int status, const User& user) {
  if (geteuid() != 0) return;
  if (setgroups(0, nullptr) != 0 || setresgid(user.group, user.group, user.group) != 0 ||
      setresuid(user.user, user.user, user.user) != 0) {
    giveUp(status, "cannot become an ordinary user");
  }
}

void raiseBounds() {
  // Bounds of the process that started us are for its own memory; Chromium reserves address space by the terabyte.
  rlimit space{};
  if (getrlimit(RLIMIT_AS, &space) == 0) {
    space.rlim_cur = space.rlim_max;
    (void)setrlimit(RLIMIT_AS, &space);
  }
  const rlimit none{0, 0};
  (void)setrlimit(RLIMIT_CORE, &none);
}

// The last ones are pages of Chromium's own window that each tab would load into a process: 40 MB, and as much time as
// a page takes.
constexpr const char* kFeaturesOff =
    "--disable-features=Translate,MediaRouter,OptimizationHints,AutofillServerCommunication,IsolateOrigins,"
    "site-per-process,IsolateSandboxedIframes,SpareRendererForSitePerProcess,BackForwardCache,Prerender2,"
    "HttpsUpgrades,HttpsFirstBalancedModeAutoEnable,PaintHolding,WebRtcHideLocalIpsWithMdns,"
    "PreloadTopChromeWebUI,WebUIOmniboxPopup,WebUIOmniboxAimPopup,WebUIOmniboxFullPopup";

const std::vector<std::string>& arguments() {
  static const std::vector<std::string> kArguments{
      "--headless=new",
      "--remote-debugging-pipe",
      "--no-startup-window",  // each tab costs a process
      "--no-first-run",
      "--no-default-browser-check",
      "--disable-gpu",
      "--disable-extensions",
      "--disable-component-extensions-with-background-pages",
      "--disable-component-update",
      "--disable-background-networking",
      "--disable-domain-reliability",
      "--disable-default-apps",
      "--disable-sync",
      "--disable-breakpad",
      "--disable-crash-reporter",
      "--disable-client-side-phishing-detection",
      "--disable-hang-monitor",
      "--disable-prompt-on-repost",
      "--disable-notifications",
      "--disable-speech-api",
      "--disable-print-preview",
      "--disable-background-timer-throttling",
      "--disable-backgrounding-occluded-windows",
      "--disable-renderer-backgrounding",
      "--disable-ipc-flooding-protection",
      "--disable-back-forward-cache",
      "--disable-blink-features=AutomationControlled",
      kFeaturesOff,
      "--disable-site-isolation-trials",
      "--block-new-web-contents",
      "--deny-permission-prompts",
      "--mute-audio",
      "--autoplay-policy=no-user-gesture-required",
      "--password-store=basic",
      "--use-mock-keychain",
      "--no-pings",
      "--no-service-autorun",
      "--host-resolver-rules=MAP * ~NOTFOUND",
      "--proxy-server=127.0.0.1:9",
      "--force-webrtc-ip-handling-policy=disable_non_proxied_udp",
      "--lang=en-US",
      "--window-size=1280,720",
      "--js-flags=--stack-size=800",
  };
  return kArguments;
}

[[noreturn]] void startChromium(int status, const std::string& program, const std::string& home, const User& user) {
  dropRights(status, user);
  (void)prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (chdir(home.c_str()) != 0 || access(home.c_str(), R_OK | W_OK | X_OK) != 0)
    giveUp(status, "an ordinary user cannot reach the run's private directory; set TMPDIR to one that it can reach");
  raiseBounds();
  umask(077);
  std::vector<std::string> words{program};
  words.insert(words.end(), arguments().begin(), arguments().end());
  words.push_back("--user-data-dir=" + home + "/profile");
  const std::vector<std::string> settings{"PATH=/usr/local/bin:/usr/bin:/bin",
                                          "HOME=" + home,
                                          "TMPDIR=" + home,
                                          "XDG_RUNTIME_DIR=" + home,
                                          "LANG=C.UTF-8",
                                          "TZ=UTC",
                                          "DBUS_SESSION_BUS_ADDRESS=disabled:",
                                          "DBUS_SYSTEM_BUS_ADDRESS=disabled:"};
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (std::string& word : words)
    argv.push_back(word.data());
  argv.push_back(nullptr);
  std::vector<char*> environment;
  environment.reserve(settings.size() + 1);
  for (const std::string& setting : settings)
    environment.push_back(const_cast<char*>(setting.c_str()));
  environment.push_back(nullptr);
  execve(program.c_str(), argv.data(), environment.data());
  giveUp(status, "cannot run it");
}

// The first process of the namespace: starts the browser, and ends with it.
[[noreturn]] void keep(int status, const std::string& program, const std::string& directory, const User& user) {
  (void)prctl(PR_SET_PDEATHSIG, SIGKILL);
  const bool isRoot = geteuid() == 0;
  if (!isRoot) keepUser(status, user.user, user.group);
  (void)setsid();  // the terminal's interrupt is for the parent
  const bool hasOwnTmp = makeWorld(user);
  const std::string home = hasOwnTmp ? "/tmp" : directory;
  const pid_t browser = fork();
  if (browser < 0) giveUp(status, "cannot start a process");
  if (browser == 0) startChromium(status, program, home, user);
  closefrom(STDERR_FILENO + 1);
  int ended = 0;
  pid_t process = 0;
  while ((process = wait(&ended)) != browser && (process > 0 || errno == EINTR)) {
  }
  _exit(0);
}

User ordinaryUser() {
  if (geteuid() != 0) return {geteuid(), getegid()};
  User user;
  if (const passwd* nobody = getpwnam("nobody")) user = {nobody->pw_uid, nobody->pw_gid};
  return user;
}

struct Pipe {
  int readEnd = -1;
  int writeEnd = -1;
};

// Ends that are above the numbers where Chromium gets its pipe.
Pipe makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw BrowserError(std::string("no pipe: ") + std::strerror(errno));
  Pipe made;
  made.readEnd = fcntl(ends[0], F_DUPFD_CLOEXEC, 10);
  made.writeEnd = fcntl(ends[1], F_DUPFD_CLOEXEC, 10);
  close(ends[0]);
  close(ends[1]);
  return made;
}

// A number of a line as "VmRSS:     1234 kB" in /proc/PID/status; 0 if there is none.
std::uint64_t numberAfter(const std::string& text, const char* name) {
  const std::size_t at = text.find(name);
  return at == std::string::npos ? 0 : std::strtoull(text.c_str() + at + std::strlen(name), nullptr, 10);
}

std::string readAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

struct Process {
  pid_t parent = 0;
  std::uint64_t memory = 0;
};

std::map<pid_t, Process> allProcesses() {
  std::map<pid_t, Process> processes;
  DIR* directory = opendir("/proc");
  if (directory == nullptr) return processes;
  while (const dirent* entry = readdir(directory)) {
    const auto number = static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10));
    if (number <= 0) continue;
    const std::string status = readAll("/proc/" + std::to_string(number) + "/status");
    processes[number] = {static_cast<pid_t>(numberAfter(status, "\nPPid:")),
                         (numberAfter(status, "\nRssAnon:") + numberAfter(status, "\nRssShmem:")) << 10};
  }
  closedir(directory);
  return processes;
}

// Those below `root`, and it.
std::set<pid_t> treeOf(pid_t root, const std::map<pid_t, Process>& processes) {
  std::multimap<pid_t, pid_t> children;
  for (const auto& [number, process] : processes)
    children.emplace(process.parent, number);
  std::set<pid_t> tree;
  std::vector<pid_t> open{root};
  while (!open.empty()) {
    const pid_t number = open.back();
    open.pop_back();
    if (!tree.insert(number).second) continue;
    const auto [first, last] = children.equal_range(number);
    for (auto child = first; child != last; ++child)
      open.push_back(child->second);
  }
  return tree;
}

bool isRenderer(pid_t process) {
  return readAll("/proc/" + std::to_string(process) + "/cmdline").find("--type=renderer") != std::string::npos;
}

std::string whyNoNamespaces(int error) {
  return std::string(
             "the browser needs namespaces of its own for network, processes and mounts, which this system does "
             "not allow (") +
         std::strerror(error) + "); without them no application is run. In a container, see docs/trial.md";
}

}  // namespace

std::string findBrowser(const std::string& program) {
  const std::string name = program.empty() ? "chromium" : program;
  if (name.find('/') != std::string::npos) {
    char* full = realpath(name.c_str(), nullptr);
    std::string found = full == nullptr || access(full, X_OK) != 0 ? "" : full;
    std::free(full);
    return found;
  }
  const char* path = std::getenv("PATH");
  std::istringstream directories(path == nullptr ? "/usr/bin:/bin" : path);
  for (std::string directory; std::getline(directories, directory, ':');) {
    std::string file = directory + "/" + name;
    if (!directory.empty() && directory.front() == '/' && access(file.c_str(), X_OK) == 0) return file;
  }
  return {};
}

double processorSeconds(pid_t process) {
  const std::string text = readAll("/proc/" + std::to_string(process) + "/stat");
  // Behind the name, which may hold anything: the state, ten numbers, then user and system time.
  std::istringstream words(text.substr(std::min(text.rfind(')') + 1, text.size())));
  std::string skipped;
  for (int i = 0; i < 11; ++i)
    words >> skipped;
  double user = 0;
  double system = 0;
  words >> user >> system;
  return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

Browser::Browser(const std::string& program, const std::string& directory) {
  const std::string file = findBrowser(program);
  if (file.empty()) {
    throw BrowserError(program.empty()
                           ? "there is no chromium; install it (apt-get install chromium), or pass --browser PATH"
                           : "there is no browser at '" + program + "'");
  }
  const User user = ordinaryUser();
  if (geteuid() == 0 && chown(directory.c_str(), user.user, user.group) != 0)
    throw BrowserError("cannot give '" + directory + "' to the browser: " + std::strerror(errno));
  const Pipe commands = makePipe();
  const Pipe answers = makePipe();
  const Pipe errors = makePipe();
  const Pipe status = makePipe();
  (void)fcntl(errors.writeEnd, F_SETFL, O_NONBLOCK);  // nobody reads it all the time: what is too much is lost
  long flags = CLONE_NEWNET | CLONE_NEWPID | CLONE_NEWNS | CLONE_NEWIPC | SIGCHLD;
  if (geteuid() != 0) flags |= CLONE_NEWUSER;
  process_ = static_cast<pid_t>(syscall(SYS_clone, flags, 0, 0, 0, 0));
  const int error = errno;
  if (process_ == 0) {
    const int none = open("/dev/null", O_RDWR | O_CLOEXEC);
    (void)dup2(none, STDIN_FILENO);
    (void)dup2(none, STDOUT_FILENO);
    (void)dup2(errors.writeEnd, STDERR_FILENO);
    (void)dup2(commands.readEnd, kCommands);
    (void)dup2(answers.writeEnd, kAnswers);
    const int kept = 5;
    (void)dup3(status.writeEnd, kept, O_CLOEXEC);
    closefrom(kept + 1);
    keep(kept, file, directory, user);
  }
  for (const int end : {commands.readEnd, answers.writeEnd, errors.writeEnd, status.writeEnd})
    close(end);
  input_ = answers.readEnd;
  output_ = commands.writeEnd;
  errors_ = errors.readEnd;
  (void)fcntl(errors_, F_SETFL, O_NONBLOCK);
  std::string why;
  std::array<char, 500> buffer{};
  ssize_t count = 0;
  while (process_ > 0 &&
         ((count = read(status.readEnd, buffer.data(), buffer.size())) > 0 || (count < 0 && errno == EINTR)))
    if (count > 0) why.append(buffer.data(), static_cast<std::size_t>(count));
  close(status.readEnd);
  if (process_ < 0 || !why.empty()) {
    end();
    for (const int descriptor : {input_, output_, errors_})
      close(descriptor);
    throw BrowserError(why.empty() ? whyNoNamespaces(error) : "the browser '" + file + "' was not started: " + why);
  }
}

Browser::~Browser() {
  end();
  for (const int descriptor : {input_, output_, errors_})
    close(descriptor);
}

void Browser::end() {
  if (process_ < 0) return;
  (void)kill(process_, SIGKILL);
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
}

ProcessSum Browser::measure() const {
  ProcessSum sum;
  if (process_ < 0) return sum;
  const auto processes = allProcesses();
  std::uint64_t largest = 0;
  for (const pid_t number : treeOf(process_, processes)) {
    const auto process = processes.find(number);
    if (process == processes.end()) continue;
    ++sum.processes;
    sum.memory += process->second.memory;
    if (!isRenderer(number)) continue;
    sum.renderers.push_back(number);
    if (process->second.memory < largest) continue;
    largest = process->second.memory;
    sum.largestRenderer = number;
  }
  return sum;
}

void Browser::endProcess(pid_t process) const {
  const auto processes = allProcesses();
  if (process > 0 && process != process_ && treeOf(process_, processes).count(process) == 1)
    (void)kill(process, SIGKILL);
}

std::string Browser::lastWords() const {
  std::string text;
  std::array<char, 4096> buffer{};
  ssize_t count = 0;
  while ((count = read(errors_, buffer.data(), buffer.size())) > 0) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
    if (text.size() > kLastWords) text.erase(0, text.size() - kLastWords);
  }
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, ' ');
  return text;
}

}  // namespace trial
