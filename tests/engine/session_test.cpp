// The session: menu, loading screen, farm and back, visits, the window's shape, and the log files.

#include <godot_cpp/classes/file_access.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/os.hpp>
#include <godot_cpp/classes/project_settings.hpp>
#include <godot_cpp/classes/window.hpp>

#include "engine_test.h"
#include "game/interface/menu.h"
#include "game/shell/game_log.h"
#include "game/shell/loading.h"
#include "game/shell/main.h"
#include "game/shell/save.h"
#include "game/shell/world.h"
#include "game/shell/world_options.h"

using namespace godot;

namespace tilm {
namespace {

template <class T>
int count_below(Node *node) {
    int n = Object::cast_to<T>(node) != nullptr ? 1 : 0;
    for (int i = 0; i < node->get_child_count(); ++i) {
        n += count_below<T>(node->get_child(i));
    }
    return n;
}

// Lets frames pass until it holds; false when it never does.
template <class Test>
bool wait_for(const Test &holds, int frames = 4000) {
    for (int i = 0; i < frames && !holds(); ++i) {
        step();
    }
    return holds();
}

struct Session {
    Save *save = add<Save>();
    Main *main = add<Main>();

    World *farm() const { return Object::cast_to<World>(main->get_current()); }
    bool in_menu() const { return Object::cast_to<Menu>(main->get_current()) != nullptr; }
    bool farm_stands() const { return farm() != nullptr && farm()->is_built() && count_below<Loading>(main) == 0; }
};

void press_play(Session &session) {
    session.main->get_current()->emit_signal("play_pressed");
    step(2);
}

TEST(Session, GoesFromMenuToFarmAndBack) {
    Session session;
    ASSERT_TRUE(session.in_menu());
    Node *menu = session.main->get_current();
    press_play(session);
    EXPECT_EQ(count_below<Loading>(session.main), 1);
    EXPECT_EQ(session.main->get_current(), menu); // it stays on until the farm replaces it
    ASSERT_TRUE(wait_for([&]() { return session.farm_stands(); }));
    EXPECT_EQ(count_below<Menu>(session.main), 0);

    tree()->set_pause(true);
    session.farm()->emit_signal("go_menu");
    step(3);
    EXPECT_TRUE(session.in_menu());
    EXPECT_FALSE(tree()->is_paused());
    EXPECT_EQ(count_below<World>(session.main), 0);
}

TEST(Session, ASecondPressNeedsNoSecondScreen) {
    Session session;
    session.main->_start();
    session.main->_start();
    step(2);
    session.main->_start();
    EXPECT_EQ(count_below<Loading>(session.main), 1);
    ASSERT_TRUE(wait_for([&]() { return session.farm_stands(); }));
    EXPECT_EQ(count_below<World>(session.main), 1);
    // With the farm standing a reload is a new screen and a new farm.
    const uint64_t old_farm = session.farm()->get_instance_id();
    session.farm()->emit_signal("go_reload");
    step(2);
    session.farm()->gain(37, Vector3()); // earned while the screen is up already, and not saved by anybody
    const int64_t money = session.farm()->money_now();
    EXPECT_EQ(count_below<Loading>(session.main), 1);
    ASSERT_TRUE(wait_for([&]() { return session.farm_stands() && session.farm()->get_instance_id() != old_farm; }));
    EXPECT_EQ(session.farm()->money_now(), money);
}

TEST(Session, AVisitKeepsTheOwnFarmAside) {
    Session session;
    Dictionary own;
    own["money"] = 5;
    session.save->set_data(own);
    Dictionary theirs;
    theirs["money"] = 9;
    session.main->_visit(7, theirs);
    EXPECT_EQ(WorldOptions::get().visit_peer, 7);
    EXPECT_TRUE(session.save->is_visiting());
    EXPECT_EQ(int64_t(session.save->get_data()["money"]), 9);
    // A second visit from the first one does not take the friend's farm for the own one.
    Dictionary others;
    others["money"] = 11;
    session.main->_visit(8, others);
    EXPECT_EQ(int64_t(session.save->own_farm()["money"]), 5);
    EXPECT_EQ(int64_t(session.save->get_data()["money"]), 11);

    session.main->_end_visit();
    EXPECT_EQ(WorldOptions::get().visit_peer, 0);
    EXPECT_FALSE(session.save->is_visiting());
    EXPECT_EQ(int64_t(session.save->get_data()["money"]), 5);
}

TEST(Session, TheMenuEndsAVisit) {
    Session session;
    Dictionary theirs;
    theirs["money"] = 9;
    session.main->_visit(7, theirs);
    session.main->_show_menu();
    EXPECT_EQ(WorldOptions::get().visit_peer, 0);
    EXPECT_FALSE(session.save->is_visiting());
}

TEST(Session, GoBackOnAFarmDoesNotQuit) {
    Session session;
    session.main->_start();
    ASSERT_TRUE(wait_for([&]() { return session.farm_stands(); }));
    session.main->notification(Node::NOTIFICATION_WM_GO_BACK_REQUEST);
    session.main->notification(Node::NOTIFICATION_APPLICATION_PAUSED); // no plugin here: nothing happens
    session.main->notification(Node::NOTIFICATION_APPLICATION_RESUMED);
    step(5); // a quit would end the engine before these have passed
    EXPECT_NE(session.farm(), nullptr);
}

TEST(Session, AFarmThatIsGoneWhenItsBuildEndsIsForgotten) {
    Session session;
    World *lost = memnew(World);
    const int64_t id = static_cast<int64_t>(lost->get_instance_id());
    memdelete(lost);
    session.main->_world_built(id);
    EXPECT_TRUE(session.in_menu());
}

TEST(Window, ScaleFollowsTheShape) {
    Session session;
    const Vector2i before = root()->get_size();
    const struct {
        Vector2i window, scale;
    } cases[] = {
        {Vector2i(1280, 720), Vector2i(720, 1250)},
        {Vector2i(720, 1280), Vector2i(720, 1560)},
        {Vector2i(800, 800), Vector2i(720, 1560)},
        {Vector2i(801, 800), Vector2i(720, 1250)},
    };
    for (const auto &c : cases) {
        root()->set_size(c.window);
        session.main->_fit_ui();
        EXPECT_EQ(root()->get_content_scale_size().y, c.scale.y) << c.window.x << " x " << c.window.y;
        EXPECT_EQ(root()->get_content_scale_size().x, c.scale.x);
    }
    root()->set_size(before);
    session.main->_fit_ui();
}

TEST(LoadingScreen, FadesOutWhenNoWorldComes) {
    Loading *loading = add<Loading>();
    const uint64_t id = loading->get_instance_id();
    EXPECT_GT(loading->get_task_count(), 30); // each good of the price table at the least
    double last = 0.0;
    bool fell = false;
    while (ObjectDB::get_instance(id) != nullptr && loading->get_stage() != 3) {
        step();
        fell = fell || loading->get_shown() < last;
        last = loading->get_shown();
    }
    EXPECT_FALSE(fell);
    EXPECT_GE(last, 0.99);
    EXPECT_TRUE(wait_for([&]() { return ObjectDB::get_instance(id) == nullptr; }, 120));
}

TEST(LoadingScreen, RunsWhileTheTreeIsPaused) {
    Loading *loading = add<Loading>();
    const uint64_t id = loading->get_instance_id();
    tree()->set_pause(true);
    const bool gone = wait_for([&]() { return ObjectDB::get_instance(id) == nullptr; });
    tree()->set_pause(false);
    EXPECT_TRUE(gone);
}

String folder(const char *name) {
    return ProjectSettings::get_singleton()->globalize_path(String("user://") + name);
}

String text_of(const String &path) {
    return FileAccess::get_file_as_string(path);
}

TEST(LogFiles, TheLastOneIsKept) {
    const String dir = folder("rotation");
    for (const char *word : {"first", "second", "third"}) {
        GameLog *log = memnew(GameLog);
        ASSERT_TRUE(log->open_in(dir));
        log->line(word);
        // Flushed at once: a crash must not take it along.
        EXPECT_TRUE(text_of(dir.path_join("Tilmarch_log.txt")).contains(word));
        memdelete(log);
    }
    const String now = text_of(dir.path_join("Tilmarch_log.txt"));
    const String previous = text_of(dir.path_join("Tilmarch_log_previous.txt"));
    EXPECT_TRUE(now.contains("] third"));
    EXPECT_FALSE(now.contains("second"));
    EXPECT_TRUE(previous.contains("] second"));
    EXPECT_TRUE(previous.strip_edges().ends_with("] ===== Tilmarch closed normally ====="));
    EXPECT_FALSE(previous.contains("first"));
}

TEST(LogFiles, TheStartBlockTellsAboutTheMachine) {
    GameLog *log = add<GameLog>();
    EXPECT_EQ(GameLog::get(), log);
    const PackedStringArray lines = text_of(log->get_dir().path_join("Tilmarch_log.txt")).split("\n", false);
    const char *const starts[] = {"===== Tilmarch started =====",
                                  "date: ",
                                  "game: ",
                                  "os: ",
                                  "cpu: ",
                                  "ram: ",
                                  "gpu: ",
                                  "gpu driver: ",
                                  "graphics api: ",
                                  "screen: ",
                                  "exe: ",
                                  "save/user dir: ",
                                  "args: ",
                                  "log dir: "};
    ASSERT_EQ(lines.size(), static_cast<int64_t>(std::size(starts)));
    for (int64_t i = 0; i < lines.size(); ++i) {
        EXPECT_TRUE(lines[i].begins_with("["));
        EXPECT_EQ(lines[i].find(starts[i]), lines[i].find("] ") + 2) << lines[i];
    }
    EXPECT_TRUE(lines[2].contains("0.1.0"));
    log->_process(4.9);
    log->_process(0.2);
    EXPECT_TRUE(text_of(log->get_dir().path_join("Tilmarch_log.txt")).contains("] fps "));
}

TEST(LogFiles, WithoutAWritableFolderTheGameGoesOn) {
    const String blocked = folder("a_file");
    FileAccess::open(blocked, FileAccess::WRITE)->store_string("in the way");
    GameLog *log = memnew(GameLog);
    expect_engine_error("Could not create directory");
    EXPECT_FALSE(log->open_in(blocked.path_join("logs")));
    log->line("nobody hears");
    log->_process(6.0);
    memdelete(log);
    EXPECT_EQ(GameLog::get(), nullptr);
    EXPECT_EQ(text_of(blocked), String("in the way"));
}

} // namespace
} // namespace tilm
