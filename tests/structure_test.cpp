// SPDX-License-Identifier: MIT
//
// The one way that includes run, checked from the include lines themselves.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

namespace helvan::testing {

namespace {

namespace fs = std::filesystem;

// What each folder may include from lies below it.
const std::map<std::string, int> levels = {{"platform", 0}, {"board", 1},    {"eval", 2}, {"book", 2},
                                           {"search", 3},   {"protocol", 4}, {"main", 5}};

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
    EXPECT_GT(rooms.size(), 20U);
    for (const auto& [room, included] : rooms) {
        for (const std::string& target : included) {
            EXPECT_TRUE(rooms.contains(target))
                << room << " includes " << target << ", written from elsewhere than src/";
            if (folderOf(target) == folderOf(room)) continue;
            EXPECT_GT(levels.at(folderOf(room)), levels.at(folderOf(target))) << room << " includes " << target;
        }
    }
}

TEST(Structure, NoCircles) {
    Rooms rooms = readRooms();
    // Whatever includes nothing is taken away, until nothing is left but circles and what includes them.
    for (std::size_t before = 0; rooms.size() != before;) {
        before = rooms.size();
        std::erase_if(rooms, [](const auto& entry) { return entry.second.empty(); });
        for (auto& entry : rooms) {
            std::erase_if(entry.second, [&](const std::string& target) { return !rooms.contains(target); });
        }
    }
    for (const auto& entry : rooms) ADD_FAILURE() << entry.first << " is in a circle of includes, or before one";
}

} // namespace helvan::testing
