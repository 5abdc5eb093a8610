// Who the studio lets in, and what a hostile client can do to it.
#include <deque>
#include <regex>

#include "studio/studio.h"

namespace {

using test::Client;
using test::Reply;

class Safety : public test::StudioTest {
 protected:
  void expectNothing(const Reply& reply, int status) const {
    EXPECT_EQ(reply.status, status);
    EXPECT_EQ(reply.body, "");
    EXPECT_FALSE(reply.headers.contains("Access-Control-Allow-Origin"));
  }
};

TEST_F(Safety, TheAddressIsTheFirstLineAndHasASecret) {
  start();
  const std::regex form("http://127\\.0\\.0\\.1:[0-9]+/[0-9a-f]{32}/");
  EXPECT_TRUE(std::regex_match(address, form)) << address;
  EXPECT_EQ(command->out, address + "\n");
  const std::string first = address;
  EXPECT_EQ(get("").status, 200);
  start();
  EXPECT_NE(address.substr(address.find('/', 10)), first.substr(first.find('/', 10)));
}

TEST_F(Safety, ListensOnTheLoopbackAddressOnly) {
  start();
  std::ifstream table("/proc/net/tcp");
  char wanted[16];
  std::snprintf(wanted, sizeof wanted, ":%04X", port);
  int listening = 0;
  for (std::string line; std::getline(table, line);) {
    if (line.find(wanted) == line.npos || line.find(" 0A ") == line.npos) continue;
    ++listening;
    EXPECT_NE(line.find("0100007F" + std::string(wanted)), line.npos) << line;
  }
  EXPECT_EQ(listening, 1);
}

TEST_F(Safety, TakesTheGivenPort) {
  start();
  const int taken = port;
  const auto refused = test::varnix({"studio", "--no-browser", "--port", std::to_string(taken)});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.error,
            "varnix: cannot listen: port " + std::to_string(taken) + " of 127.0.0.1\n");
  command->signal(SIGTERM);
  EXPECT_EQ(command->wait(), 128 + SIGTERM);
  start({"--port", std::to_string(taken)});
  EXPECT_EQ(port, taken);
  for (const char* wrong : {"-1", "65536"})
    EXPECT_EQ(test::varnix({"studio", "--no-browser", "--port", wrong}).status, 2);
}

TEST_F(Safety, WithoutTheSecretThereIsNothing) {
  start();
  std::string wrong = path;
  wrong[1] = wrong[1] == '0' ? '1' : '0';
  for (const std::string& target :
       {std::string("/"), std::string("/theme"), wrong, wrong + "theme", path.substr(0, 20) + "/",
        path.substr(0, path.size() - 1), "/x" + path, std::string("/../") + path,
        std::string("//") + path.substr(1)})
    expectNothing(request("GET", target, ownHost()), 404);
  expectNothing(request("POST", wrong + "changes", ownHost(), "{}"), 404);
  expectNothing(request("OPTIONS", "/", ownHost()), 404);
  EXPECT_EQ(get("theme").status, 200);
}

TEST_F(Safety, OtherNamesOfThisMachineAreRefused) {
  start();
  const std::string suffix = ":" + std::to_string(this->port);
  for (const std::string& name :
       {"rebound.example" + suffix, "localhost" + suffix, std::string("127.0.0.1"),
        "127.0.0.1" + suffix + ".example", "[::1]" + suffix, std::string()})
    expectNothing(request("GET", path + "theme", "Host: " + name + "\r\n"), 403);
  expectNothing(request("GET", path + "theme"), 403);
  expectNothing(request("GET", path + "theme", ownHost() + "Host: rebound.example\r\n"), 403);
}

TEST_F(Safety, OtherOriginsAreRefused) {
  start();
  const std::string suffix = ":" + std::to_string(this->port);
  for (const std::string& origin :
       {std::string("http://site.example"), std::string("null"), "http://localhost" + suffix,
        "https://127.0.0.1" + suffix, "http://127.0.0.1" + suffix + ".example"})
    expectNothing(request("GET", path + "theme", ownHost() + "Origin: " + origin + "\r\n"), 403);
  for (const char* from : {"cross-site", "same-site"})
    expectNothing(request("GET", path + "theme", ownHost() + "Sec-Fetch-Site: " + from + "\r\n"),
                  403);
  EXPECT_EQ(request("GET", path + "theme",
                    ownHost() + "Origin: http://" + host + "\r\nSec-Fetch-Site: same-origin\r\n")
                .status,
            200);
}

TEST_F(Safety, AFileMayLeadToThePageAndToNothingElse) {
  start();
  const std::string from = ownHost() + "Sec-Fetch-Site: cross-site\r\n";
  const std::string opens = from + "Sec-Fetch-Mode: navigate\r\n";
  EXPECT_EQ(request("GET", path, opens + "Sec-Fetch-Dest: document\r\n").status, 200);
  expectNothing(request("GET", path, opens + "Sec-Fetch-Dest: iframe\r\n"), 403);
  expectNothing(request("GET", path, from + "Sec-Fetch-Dest: document\r\n"), 403);
  expectNothing(request("GET", path, opens), 403);
  expectNothing(request("POST", path, opens + "Sec-Fetch-Dest: document\r\n"), 403);
  expectNothing(
      request("GET", path, opens + "Sec-Fetch-Dest: document\r\nOrigin: http://site.example\r\n"),
      403);
  for (const char* what : {"theme", "material/", "export"})
    expectNothing(request("GET", path + what, opens + "Sec-Fetch-Dest: document\r\n"), 403);
}

TEST_F(Safety, ThePageLoadsNothingFromElsewhere) {
  start();
  const Reply page = get("");
  EXPECT_TRUE(page.headers.at("Content-Security-Policy").starts_with("default-src 'none';"));
  EXPECT_EQ(page.headers.at("Referrer-Policy"), "no-referrer");
  EXPECT_EQ(page.headers.at("Cross-Origin-Resource-Policy"), "same-origin");
  EXPECT_EQ(page.headers.at("X-Content-Type-Options"), "nosniff");
  EXPECT_EQ(page.body.find("//"), page.body.npos);
}

TEST_F(Safety, NoPathIsOneOfTheMachine) {
  write(color("global_color", "#123456"));
  start({file()});
  for (const char* wanted :
       {"theme.plist", "../theme.plist", "..%2ftheme.plist", "material/../theme.plist",
        "material/%2e%2e/theme.plist", "material//etc/passwd", "material/icon/..%2f..",
        "picture//etc/passwd?wallpaper=light&scale=1&revision=1", "etc/passwd"}) {
    const Reply reply = get(wanted);
    EXPECT_TRUE(reply.status == 404 || reply.status == 400) << wanted << ' ' << reply.status;
    EXPECT_EQ(reply.body.find("123456"), reply.body.npos) << wanted;
    EXPECT_EQ(reply.body.find("root:"), reply.body.npos) << wanted;
  }
  EXPECT_EQ(request("PUT", path + "material/../../x", ownHost(), "\x89PNG\r\n\x1a\n").status, 400);
}

TEST_F(Safety, BodiesAreLimited) {
  start();
  for (const auto& [length, status] : {std::pair<const char*, int>{"1073741824", 413},
                                       {"16777217", 413},
                                       {"99999999999999999999999", 413},
                                       {"-1", 400},
                                       {"1x", 400}}) {
    const Client client(port);
    client.send("POST " + path + "changes HTTP/1.1\r\n" + ownHost() + "Content-Length: " + length +
                "\r\n\r\n");
    EXPECT_EQ(client.reply().status, status) << length;
  }
  const Client chunked(port);
  chunked.send("POST " + path + "changes HTTP/1.1\r\n" + ownHost() +
               "Transfer-Encoding: chunked\r\n\r\n");
  EXPECT_EQ(chunked.reply().status, 411);
  EXPECT_EQ(request("POST", path + "pick", ownHost() + "Content-Encoding: gzip\r\n", "x").status,
            415);
}

TEST_F(Safety, AGigabyteIsNotReadOn) {
  start();
  const Client client(port);
  client.send("POST " + path + "pick HTTP/1.1\r\n" + ownHost() +
              "Content-Length: 1073741824\r\n\r\n");
  const std::string block(1 << 20, 'x');
  int sent = 0;
  while (sent < 1024 && client.send(block)) ++sent;
  // What fits into the buffers on the way, and the little that is taken.
  EXPECT_LT(sent, 64);
  EXPECT_EQ(get("theme").status, 200);
}

TEST_F(Safety, AnEndlessHeadEnds) {
  start();
  const Client client(port);
  client.send("GET " + path + "theme HTTP/1.1\r\n" + ownHost());
  int sent = 0;
  while (sent < 10000 && client.send("X-Line: " + std::string(1000, 'x') + "\r\n")) ++sent;
  EXPECT_LT(sent, 10000);
  EXPECT_EQ(get("theme").status, 200);
}

TEST_F(Safety, TooManyConnectionsAreTurnedAwayAtOnce) {
  start();
  std::deque<Client> silent;
  for (int i = 0; i < 200; ++i) silent.emplace_back(port);
  int open = 0;
  for (const Client& client : silent) open += client.isConnected() ? 1 : 0;
  EXPECT_EQ(open, 200);
  EXPECT_EQ(request("GET", path + "theme", ownHost()).status, 503);
  EXPECT_TRUE(silent.back().readAll().starts_with("HTTP/1.1 503 "));
  silent.clear();
  // The studio notices that they are gone.
  const auto end = std::chrono::steady_clock::now() + test::kPatience;
  while (get("theme").status != 200 && std::chrono::steady_clock::now() < end) usleep(10'000);
  EXPECT_EQ(get("theme").status, 200);
}

TEST_F(Safety, AClientThatHangsIsLetGo) {
  start();
  std::deque<Client> hanging;
  for (int i = 0; i < 40; ++i) {
    hanging.emplace_back(port);
    hanging.back().send("GET " + path + "theme HTTP/1.1\r\nHost:");
  }
  EXPECT_EQ(get("theme").status, 200) << "others are served meanwhile";
  // Returns once the other end closes; it never sends an answer.
  EXPECT_EQ(hanging.front().reply().status / 100, 4);
}

TEST_F(Safety, EndsWithASignalAndTheTerminal) {
  constexpr int kTries = 10;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    // One that is waiting when the signal comes is answered. It may not have been read by then.
    bool isAnswered = false;
    for (int i = 0; i < kTries && !isAnswered; ++i) {
      start();
      const Client waiting(port);
      waiting.send("GET " + path + "news?version=1 HTTP/1.1\r\n" + ownHost() + "\r\n");
      const Client silent(port);
      EXPECT_EQ(get("theme").status, 200);
      command->signal(signal);
      EXPECT_EQ(command->wait(), 128 + signal);
      const Reply last = waiting.reply();
      isAnswered = last.status == 200 && last.json().value("version", 0) == 1;
    }
    EXPECT_TRUE(isAnswered) << signal;
  }
}

TEST_F(Safety, EndsAMinuteAfterThePage) {
  start();
  EXPECT_EQ(get("theme").status, 200);
  const auto since = std::chrono::steady_clock::now();
  while (command->isRunning() &&
         std::chrono::steady_clock::now() - since < std::chrono::seconds(100))
    usleep(100'000);
  EXPECT_FALSE(command->isRunning());
  EXPECT_GT(std::chrono::steady_clock::now() - since, std::chrono::seconds(55));
}

}  // namespace
