// stations ADDRESS CHIPS KILLS: four stations draw from one order of one ledger until so many chips are good, one in
// twenty is not, and so many times a station is killed at a random moment and started again. In the end the unsure
// numbers are settled by what their chips hold. Answers 0 where no two good chips have one number, none was skipped,
// and the records tell of every good chip.
// stations station ADDRESS CHIPS SEED: one of them. Tells each chip that is good the moment it is, and when the books
// have it.
#include "ledger/sql_books.h"

#include <QCoreApplication>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <set>

using namespace vrk;

namespace {

constexpr int first_number = 1001;
constexpr int failures_in_hundred = 5;
constexpr int most_ms_to_a_kill = 200;

Order drawn_from()
{
    Order order{"stations", AutoIncrease{}};
    order.rule.bytes = 4;
    order.rule.increment = 1;
    order.rule.next_value = std::to_string(first_number);
    return order;
}

void tell(const std::string& words)
{
    const std::string line = words + "\n";
    if (write(STDOUT_FILENO, line.data(), line.size()) < 0) // in one piece, or not at all
        std::exit(1);
}

int complain(const BooksFault& fault)
{
    std::cerr << fault_text(fault).en << "\n";
    return 1;
}

int work(const std::string& address, int chips, unsigned seed)
{
    std::mt19937 random(seed);
    SqlBooks books(address, "station " + std::to_string(seed));
    for (int done = 0; done < chips;) {
        if (const auto fault = books.open())
            return complain(*fault);
        const auto given = books.reserve(drawn_from());
        if (given.fault)
            return complain(*given.fault);
        if (const auto fault = books.begin_work({&given.value, 1}))
            return complain(*fault);
        const bool good = int(random() % 100) >= failures_in_hundred;
        if (good)
            tell("good " + given.value.value); // from here on the chip holds it
        ChipRecord record;
        record.number = given.value.value;
        record.result = good ? "good" : "erase-failed";
        const EndKept end = books.end_chip({{given.value}, good, record});
        if (end.place != EndKept::Place::in_books)
            return complain(*end.fault);
        if (good) {
            tell("told " + given.value.value);
            ++done;
        }
    }
    return 0;
}

struct Station {
    pid_t pid = 0;
    int from = -1;
    std::string said;
    bool ended = false;
};

Station start(const std::string& program, const std::string& address, int chips, unsigned seed)
{
    int ends[2];
    if (pipe(ends) != 0)
        std::exit(1);
    Station station;
    station.pid = fork();
    if (station.pid == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        const std::string all = std::to_string(chips);
        const std::string its_seed = std::to_string(seed);
        execl(program.c_str(), program.c_str(), "station", address.c_str(), all.c_str(), its_seed.c_str(), nullptr);
        _exit(127);
    }
    close(ends[1]);
    station.from = ends[0];
    return station;
}

// What all of them have said.
struct Told {
    std::multiset<int> good;
    std::set<int> told;
};

void listen(Station& station, Told& told)
{
    std::array<char, 4096> bytes{};
    const ssize_t count = read(station.from, bytes.data(), bytes.size());
    station.ended = count <= 0;
    station.said.append(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0U);
    for (std::size_t end = 0; (end = station.said.find('\n')) != std::string::npos; station.said.erase(0, end + 1)) {
        const int number = std::atoi(station.said.c_str() + 5);
        if (station.said.starts_with("good "))
            told.good.insert(number);
        else
            told.told.insert(number);
    }
}

// As a person who looks at the chip.
int settle_all(Books& books, const Told& told)
{
    const auto unsure = books.numbers({}, false);
    for (const NumberRow& row : unsure.value) {
        const bool holds = told.good.contains(std::atoi(row.value.c_str()));
        if (const auto fault =
                books.settle({row.order, row.kind, row.value, holds ? NumberState::spent : NumberState::free}))
            complain(*fault);
    }
    return int(unsure.value.size());
}

// What is wrong in the end, one line each.
std::string judge(Books& books, const Told& told)
{
    std::string wrong;
    for (const int number : told.good) {
        if (told.good.count(number) != 1)
            wrong += std::to_string(number) + " is on two good chips\n";
    }
    std::map<int, int> records;
    ChipFilter good;
    good.result = "good";
    for (const ChipRecord& record : books.chips(good).value)
        ++records[std::atoi(record.number.c_str())];
    for (const int number : told.told) {
        if (records[number] != 1)
            wrong += std::to_string(number) + " was told of and has " + std::to_string(records[number]) + " records\n";
    }
    int expected = first_number;
    for (const NumberRow& row : books.numbers({}, true).value) {
        const int number = std::atoi(row.value.c_str());
        if (number != expected++)
            wrong += std::to_string(expected - 1) + " was skipped\n";
        if ((row.state == NumberState::spent) != told.good.contains(number))
            wrong += row.value + " is " + std::string{word_of(row.state)} + " and in " +
                std::to_string(told.good.count(number)) + " good chips\n";
    }
    return wrong;
}

int run(const std::string& program, const std::string& address, int chips, int kills, unsigned seed)
{
    using Clock = std::chrono::steady_clock;
    std::mt19937 random(seed);
    std::array<Station, 4> stations;
    unsigned started = 0;
    const auto start_one = [&] { return start(program, address, chips / 4, ++started); };
    for (Station& station : stations)
        station = start_one();
    const auto next_kill = [&random] { return Clock::now() + std::chrono::milliseconds(random() % most_ms_to_a_kill); };
    auto kill_at = next_kill();
    Told told;
    int killed = 0;
    int failed = 0;
    for (std::size_t running = stations.size(); running > 0;) {
        std::array<pollfd, 4> files{};
        for (std::size_t i = 0; i < files.size(); ++i)
            files[i] = {stations[i].ended ? -1 : stations[i].from, POLLIN, 0};
        poll(files.data(), files.size(), 5);
        if (killed < kills && Clock::now() >= kill_at) {
            Station& one = stations[random() % stations.size()];
            if (!one.ended)
                kill(one.pid, SIGKILL);
            kill_at = next_kill();
        }
        for (std::size_t i = 0; i < files.size(); ++i) {
            if (files[i].revents == 0)
                continue;
            listen(stations[i], told);
            if (!stations[i].ended)
                continue;
            int status = 0;
            waitpid(stations[i].pid, &status, 0);
            close(stations[i].from);
            failed += WIFEXITED(status) && WEXITSTATUS(status) != 0 ? 1 : 0;
            const bool was_killed = WIFSIGNALED(status);
            killed += was_killed ? 1 : 0;
            if (killed < kills || (was_killed && int(told.told.size()) < chips))
                stations[i] = start_one();
            else
                --running;
        }
    }
    SqlBooks books(address, "desk");
    usleep(300'000); // until a server has noticed who is dead
    const int unsure = settle_all(books, told);
    const std::string wrong = judge(books, told);
    std::cout << wrong << told.good.size() << " good chips, " << killed << " kills, " << unsure
              << " numbers settled by hand; seed " << seed << "\n";
    return wrong.empty() && failed == 0 && int(told.told.size()) >= chips ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    const QCoreApplication application(argc, argv);
    if (words.size() == 4 && words[0] == "station")
        return work(words[1], std::atoi(words[2].c_str()), unsigned(std::atoi(words[3].c_str())));
    if (words.size() != 3) {
        std::cerr << "usage: stations ADDRESS CHIPS KILLS\n";
        return 2;
    }
    const char* seed = std::getenv("VRK_SEED");
    return run(argv[0], words[0], std::atoi(words[1].c_str()), std::atoi(words[2].c_str()),
        seed != nullptr ? unsigned(std::atoi(seed)) : std::random_device{}());
}
