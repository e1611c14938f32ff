#pragma once
// Save objects on files of their own, and those files as bytes.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "engine_test.h"
#include "game/shell/save.h"
#include "game/shell/save_text.h"
#include "safe_read.h"

namespace tilm {

class SaveTest : public testing::Test {
protected:
    void SetUp() override {
        static int number = 0;
        path = String("user://t") + String::num_int64(++number) + String(".json");
    }
    void TearDown() override {
        for (Save *save : made) {
            memdelete(save);
        }
    }

    // As the game meets the file at its start, without the language and the command line.
    Save *open() {
        Save *save = memnew(Save);
        made.push_back(save);
        save->path = path;
        save->read();
        return save;
    }

    std::string native(const char *suffix = "") const { return native_path(path + String(suffix)); }
    bool exists(const char *suffix = "") const { return std::filesystem::exists(native(suffix)); }

    std::string bytes(const char *suffix = "") const {
        std::ifstream in(native(suffix), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void put(const std::string &content, const char *suffix = "") const {
        std::ofstream(native(suffix), std::ios::binary) << content;
    }

    static Dictionary farm(int64_t money) {
        Dictionary levels;
        levels["coop_a"] = 2;
        levels["field_corn"] = 1;
        levels["stall_egg"] = 1;
        Dictionary doc;
        doc["money"] = money;
        doc["levels"] = levels;
        return doc;
    }
    static int64_t money(const Save *save) { return read_whole(save->data, "money", -1); }
    static Dictionary row(const Save *save, int64_t i) { return save->farms[i]; }
    static int64_t row_money(const Save *save, int64_t i) {
        return read_whole(read_table(row(save, i), "farm"), "money", -1);
    }

    String path;

private:
    std::vector<Save *> made;
};

} // namespace tilm
