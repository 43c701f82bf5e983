// Devices come and go, and with them the places in the list: the choice goes by the port's path.
#include "shell/settings_bench.h"

#include "shell/make_job.h"

using namespace vrk;

namespace {

void plug_out(Program& run, const char* path)
{
    run.ports.remove(path);
    run.loop.run_for_ms(1);
}
void plug_in(Program& run, const char* path)
{
    run.ports.add(path, run.wire);
    run.loop.run_for_ms(1);
}

struct Chosen : Program {
    Chosen(SettingsStore& store, int item)
        : Program(store)
    {
        choose_item(shell, form.list("combCommPort"), item);
    }
    std::string shown() const { return form.list("combCommPort").text(); }
};

} // namespace

// The list used to fall to its first port: the next press went to another machine's chip.
TEST(PortChoice, OfAPortThatIsGoneIsNoOtherPort)
{
    MemoryStore store;
    Chosen run(store, 2);
    plug_out(run, "third");
    EXPECT_EQ(run.shown(), "");
    EXPECT_EQ(run.form.list("combCommPort").index_chosen(), -1);
    EXPECT_EQ(make_job(run.shell).line.port_path, "");
}

TEST(PortChoice, ComesBackWithItsPort)
{
    MemoryStore store;
    Chosen run(store, 2);
    plug_out(run, "third");
    plug_out(run, "first");
    plug_in(run, "third");
    EXPECT_EQ(run.shown(), "third");
    EXPECT_EQ(make_job(run.shell).line.port_path, "third");
}

TEST(PortChoice, OfAHandWhileThePortWasGoneStands)
{
    MemoryStore store;
    Chosen run(store, 2);
    plug_out(run, "third");
    choose_item(run.shell, run.form.list("combCommPort"), 1);
    plug_in(run, "third");
    EXPECT_EQ(run.shown(), "second");
}

TEST(PortChoice, IsKeptByItsPathWhichWinsOverThePlaceInTheList)
{
    MemoryStore store;
    {
        Chosen run(store, 2);
        run.let_the_save_run();
    }
    EXPECT_EQ(stored(store, "COM_port_path"), "third");
    EXPECT_EQ(stored(store, "COM_port"), "2");
    put(store, "COM_port", "0");
    Program next(store);
    EXPECT_EQ(next.form.list("combCommPort").text(), "third");
}

TEST(PortChoice, OfSettingsWithoutAPathGoesByThePlace)
{
    MemoryStore store;
    put(store, "COM_port", "1");
    Program run(store);
    EXPECT_EQ(run.form.list("combCommPort").text(), "second");
    run.let_the_save_run();
    EXPECT_EQ(stored(store, "COM_port_path"), "second");
}

TEST(PortChoice, OfAPortThatIsNotThereYetWaitsForIt)
{
    MemoryStore store;
    put(store, "COM_port_path", "fifth");
    Program run(store);
    EXPECT_EQ(run.form.list("combCommPort").index_chosen(), -1);
    run.let_the_save_run();
    EXPECT_EQ(stored(store, "COM_port_path"), "fifth");
    plug_in(run, "fifth");
    EXPECT_EQ(run.form.list("combCommPort").text(), "fifth");
}

TEST(PortChoice, OfWhoHasNeverChosenIsTheFirstThatIsPluggedIn)
{
    MemoryStore store;
    Program run(store);
    for (const char* path : {"first", "second", "third", "fourth"})
        plug_out(run, path);
    EXPECT_EQ(run.form.list("combCommPort").index_chosen(), -1);
    plug_in(run, "first");
    EXPECT_EQ(run.form.list("combCommPort").text(), "first");
}
