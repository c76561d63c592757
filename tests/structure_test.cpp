// SPDX-License-Identifier: MIT
//
// The one way that includes run, checked from the include lines themselves.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <string>

namespace helvan::testing {

namespace {

namespace fs = std::filesystem;

// What each folder may include from, itself apart.
const std::map<std::string, std::set<std::string>> allowedFolders = {
    {"board", {}},
    {"eval", {"board"}},
    {"book", {"board"}},
    {"search", {"book", "eval", "board"}},
    {"protocol", {"search", "book", "eval", "board"}},
    {"main", {"protocol", "search", "book", "eval", "board"}}};

// The leaves that every folder may use.
const std::set<std::string> leaves = {"platform/platform", "protocol/log", "protocol/end_process"};

using Rooms = std::map<std::string, std::set<std::string>>;

std::string withoutExtension(const std::string& path) { return path.substr(0, path.rfind('.')); }
std::string folderOf(const std::string& room) { return room.substr(0, room.find('/')); }

// Every room (a source and its header) with the rooms that it includes.
Rooms readRooms() {
    Rooms rooms;
    for (const auto& entry : fs::recursive_directory_iterator(HELVAN_SOURCE_ROOT)) {
        const std::string extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") continue;
        const std::string room = withoutExtension(fs::relative(entry.path(), HELVAN_SOURCE_ROOT));
        std::set<std::string>& included = rooms[room];
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            if (line.rfind("#include \"", 0) != 0) continue;
            const std::string target = withoutExtension(line.substr(10, line.find('"', 10) - 10));
            if (target != room) included.insert(target);
        }
    }
    return rooms;
}

} // namespace

TEST(Structure, IncludesRunOneWay) {
    const Rooms rooms = readRooms();
    EXPECT_GT(rooms.size(), 20u);
    for (const auto& [room, included] : rooms) {
        for (const std::string& target : included) {
            EXPECT_TRUE(rooms.count(target)) << room << " includes " << target << ", written from elsewhere than src/";
            if (leaves.count(target) || folderOf(target) == folderOf(room)) continue;
            EXPECT_TRUE(allowedFolders.at(folderOf(room)).count(folderOf(target))) << room << " includes " << target;
        }
    }
    for (const std::string& leaf : leaves) {
        for (const std::string& target : rooms.at(leaf))
            EXPECT_TRUE(leaves.count(target)) << leaf << " includes " << target;
    }
}

TEST(Structure, NoCircles) {
    const Rooms rooms = readRooms();
    std::set<std::string> finished, open;
    const std::function<void(const std::string&)> visit = [&](const std::string& room) {
        if (finished.count(room)) return;
        ASSERT_TRUE(open.insert(room).second) << "a circle of includes runs through " << room;
        for (const std::string& target : rooms.at(room)) visit(target);
        open.erase(room);
        finished.insert(room);
    };
    for (const auto& entry : rooms) visit(entry.first);
}

} // namespace helvan::testing
