// SPDX-License-Identifier: MIT
#include "book/book.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "board/castling.h"
#include "board/legal_moves.h"
#include "board/move_text.h"
#include "board/moves.h"
#include "book/polyglot_key.h"
#include "book/settings.h"
#include "platform/end_process.h"
#include "platform/log.h"
#include "platform/platform.h"

namespace helvan {

namespace {

constexpr int entrySize = 16;

struct BookEntry {
    std::uint64_t key;
    unsigned move;
    unsigned weight;
};

// The file, entry by entry.
class EntryReader {
public:
    explicit EntryReader(std::FILE* file) : book(file) {}

    std::int64_t count() {
        if (!seekFile(book, 0, SEEK_END)) fail();
        return tellFile(book) / entrySize;
    }

    // A short read, as one entry past the last, goes unnoticed: the bytes read before stay.
    BookEntry at(std::int64_t index) {
        if (!seekFile(book, index * entrySize, SEEK_SET)) fail();
        [[maybe_unused]] const std::size_t read = std::fread(bytes.data(), entrySize, 1, book);
        return {number(0, 8), static_cast<unsigned>(number(8, 2)), static_cast<unsigned>(number(10, 2))};
    }

private:
    [[noreturn]] static void fail() {
        std::fprintf(stderr, "Error with fseek opening book\n");
        endProcess(1);
    }

    // Big-endian.
    std::uint64_t number(int first, int length) const {
        std::uint64_t value = 0;
        for (int i = first; i < first + length; ++i) value = value << 8 | bytes[i];
        return value;
    }

    std::FILE* book;
    std::array<unsigned char, entrySize> bytes{};
};

// The index of an entry with the key, or -1. The file's order is not trusted: every step shortens the range, so this
// ends whatever the file holds.
std::int64_t findKey(EntryReader& reader, std::int64_t count, std::uint64_t key) {
    // One past the last is looked at, too. Nothing is read there, so that what was read before stays, which was not the
    // key; or the rest of a file that was cut off, which may be.
    std::int64_t low = 0, high = count;
    while (low <= high) {
        const std::int64_t middle = low + (high - low) / 2;
        const std::uint64_t found = reader.at(middle).key;
        if (found == key) return middle;
        if (key < found) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return -1;
}

// All entries with the key that stand together with the one at the index. No position has more than a few hundred
// moves; a file with more entries for one is no book and shall not hold the search up.
std::vector<BookEntry> entriesAround(EntryReader& reader, std::int64_t index, std::int64_t count, std::uint64_t key) {
    constexpr int mostEntries = 1024;
    for (int back = 0; back < mostEntries && index > 0 && reader.at(index - 1).key == key; ++back) --index;
    std::vector<BookEntry> entries;
    // Never past the last entry, where the bytes read before would answer for ever.
    for (const std::int64_t end = std::min(count, index + mostEntries); index < end; ++index) {
        const BookEntry entry = reader.at(index);
        if (entry.key != key) break;
        entries.push_back(entry);
    }
    return entries;
}

std::string coordinateText(unsigned move) {
    constexpr std::string_view promotions = " nbrq???"; // the last three do not exist
    const auto square = [](unsigned at) {
        return std::string{static_cast<char>('a' + (at & 7)), static_cast<char>('1' + (at >> 3))};
    };
    std::string text = square(move >> 6 & 63) + square(move & 63);
    if (const unsigned promotion = move >> 12 & 7; promotion != 0) text += promotions[promotion];
    return text;
}

// Books write castling as the king taking its rook.
std::string castlingAsKingMove(const Position& position, const std::string& text) {
    for (const CastlingRight& right : castlingRights) {
        const bool kingAtHome = (position.of(right.colour, king) & bit(right.kingFrom)) != 0;
        if (kingAtHome && text == moveText(encodeMove(right.kingFrom, right.rookFrom))) return moveText(right.move());
    }
    return text;
}

struct Candidate {
    Move move;
    std::uint64_t weight;
};

// The legal moves of the entries with their weights, as they stand in the file. Empty when one is not legal.
std::vector<Candidate> candidatesOf(const Position& position, const std::vector<BookEntry>& entries) {
    Move legal[maxMoves];
    const int count = legalMoves(position, legal);
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) texts.push_back(moveText(legal[i]));
    std::vector<Candidate> candidates;
    for (const BookEntry& entry : entries) {
        if (entry.weight == 0) continue;
        const std::string text = castlingAsKingMove(position, coordinateText(entry.move));
        const auto found = std::find(texts.begin(), texts.end(), text);
        if (found == texts.end()) {
            logWrite("Hey, book seems broken\n");
            return {};
        }
        candidates.push_back({legal[found - texts.begin()], entry.weight});
        logWrite("book: %-5s %5d\n", text.c_str(), static_cast<int>(entry.weight));
    }
    return candidates;
}

// Leaves only the candidates of the greatest weight, in their order.
void keepBest(std::vector<Candidate>& candidates) {
    std::uint64_t most = 0;
    for (const Candidate& candidate : candidates) most = std::max(most, candidate.weight);
    std::erase_if(candidates, [&](const Candidate& candidate) { return candidate.weight < most; });
}

Move draw(const std::vector<Candidate>& candidates) {
    std::uint64_t total = 0;
    for (const Candidate& candidate : candidates) total += candidate.weight;
    if (total == 0) return nullMove;
    const std::uint64_t mask = std::bit_ceil(total) - 1;
    std::uint64_t drawn = 0;
    do {
        drawn = static_cast<std::uint64_t>(std::rand()) & mask;
    } while (drawn >= total);
    for (const Candidate& candidate : candidates) {
        if (drawn < candidate.weight) return candidate.move;
        drawn -= candidate.weight;
    }
    return nullMove;
}

} // namespace

void Book::close() {
    if (file != nullptr) std::fclose(file);
    file = nullptr;
}

void reopenBook(Book& book) {
    book.close();
    // Opening a directory may succeed, and a pipe would have to be waited for.
    const bool wanted = bookSettings.ownBook == 1 && isRegularFile(bookSettings.bookFileName);
    if (wanted) book.file = std::fopen(bookSettings.bookFileName, "rb");
    // The file may be written anew under our hands: what a buffer holds of it would be out of date.
    if (book.file != nullptr) std::setvbuf(book.file, nullptr, _IONBF, 0);
}

Move probeBook(Book& book, const Position& position) {
    if (book.file == nullptr) return nullMove;
    const std::uint64_t key = polyglotKey(position);
    EntryReader reader(book.file);
    const std::int64_t count = reader.count();
    if (count <= 0) return nullMove;
    const std::int64_t found = findKey(reader, count, key);
    if (found < 0) return nullMove;
    std::vector<Candidate> candidates = candidatesOf(position, entriesAround(reader, found, count, key));
    if (bookSettings.bestLineOnly != 0) keepBest(candidates);
    return draw(candidates);
}

} // namespace helvan
