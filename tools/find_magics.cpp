// SPDX-License-Identifier: MIT
//
// find-magics [SEED [TRIES [ROUNDS]]]
//
// Searches the multipliers and offsets of board/attacks.cpp and prints them as its two tables, progress on stderr.
// TRIES is how many multipliers each climb looks at, ROUNDS how often a few blocks are placed anew; equal arguments
// give equal tables. The defaults, which found the source's, take four minutes.
//
// Attack sets that two squares share are so few (the long diagonals seen from both of their corners) that nothing is
// gained by looking for them: the blocks overlap where one's unused indices hold another's used ones. Hence two steps.
// For each square, annealing over multipliers collects those that send blockers with equal attacks to one index and
// use the others in runs: unused indices that lie about singly fit no other block. Then the blocks are laid over each
// other, greedily at first, later by taking some out and placing them again.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <vector>

#include "board/attacks.h"
#include "board/bits.h"

namespace {

using helvan::Bitboard;

constexpr int squares = 64;
constexpr int blocks = 2 * squares;  // rooks first, bishops behind them
constexpr std::size_t poolSize = 64; // multipliers that a climb keeps
constexpr int offsetStep = 8;
constexpr int patience = 20000; // tries without a gain until a climb begins anew elsewhere

struct Random {
    std::uint64_t state;
    std::uint64_t operator()() { // splitmix64
        std::uint64_t z = state += 0x9e3779b97f4a7c15;
        z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
        z = (z ^ z >> 27) * 0x94d049bb133111eb;
        return z ^ z >> 31;
    }
    int below(int limit) { return static_cast<int>((*this)() % static_cast<std::uint64_t>(limit)); }
    double unit() { return static_cast<double>((*this)() >> 11) * 0x1p-53; }
};

constexpr bool isRook(int block) { return block < squares; }
constexpr int shiftOf(int block) { return isRook(block) ? helvan::rookShift : helvan::bishopShift; }
constexpr int lengthOf(int block) { return 1 << (64 - shiftOf(block)); }
Bitboard maskOf(int block) { return isRook(block) ? helvan::rookMask[block] : helvan::bishopMask[block - squares]; }

// By plain walking: the look-ups depend on the very constants that are sought.
Bitboard walk(int block, Bitboard occupied) {
    Bitboard attacks = 0;
    for (int dx = -1; dx <= 1; ++dx) {
        for (int dy = -1; dy <= 1; ++dy) {
            if ((dx == 0 && dy == 0) || (dx == 0 || dy == 0) != isRook(block)) continue;
            int x = block % 8 + dx, y = block % squares / 8 + dy;
            for (; x >= 0 && x < 8 && y >= 0 && y < 8; x += dx, y += dy) {
                const Bitboard at = Bitboard{1} << (y * 8 + x);
                attacks |= at;
                if ((occupied & at) != 0) break;
            }
        }
    }
    return attacks;
}

// What a climb makes small: the indices in all runs that are used at all, and a share of the highest index.
struct Goal {
    int runBits; // a run is so many bits long: 5 for 32 indices
    double highestWeight;
};
constexpr std::array<Goal, 3> rookGoals = {{{5, 0.125}, {6, 0.25}, {6, 1}}};
constexpr std::array<Goal, 1> bishopGoals = {{{3, 0.5}}};

using Pattern = std::array<std::uint64_t, 64>; // one bit an index; a bishop's block uses the first 8 words

struct Candidate {
    std::uint64_t multiplier;
    double cost;
    int words; // of the pattern, up to its last used one
    Pattern used;

    int span() const { return words * 64; }
};

// Tells which indices a multiplier uses for one square, if it is of use at all.
class Judge {
public:
    Judge(int block, const Goal& aim) : goal(aim), shift(shiftOf(block)) {
        const Bitboard mask = maskOf(block);
        std::map<Bitboard, std::uint32_t> classes;
        Bitboard blockers = 0;
        do {
            const auto number = static_cast<std::uint32_t>(classes.size());
            cases.push_back({blockers, classes.try_emplace(walk(block, blockers), number).first->second});
            blockers = (blockers - mask) & mask;
        } while (blockers != 0);
    }

    // 0 if it sends blockers with different attacks to one index.
    double costOf(std::uint64_t multiplier) {
        if (++epoch == 1U << 20) {
            table.fill(0);
            runs.fill(0);
            epoch = 1;
        }
        int usedRuns = 0;
        std::uint64_t highest = 0;
        const std::uint32_t first = epoch << 12;
        for (std::size_t i = 0; i < cases.size(); ++i) {
            const std::uint64_t index = cases[i].blockers * multiplier >> shift;
            std::uint32_t& seen = table[index];
            const std::uint32_t wanted = first | cases[i].attacks;
            if (seen < first) {
                seen = wanted;
                highest = std::max(highest, index);
                std::uint32_t& run = runs[index >> goal.runBits];
                if (run != epoch) ++usedRuns;
                run = epoch;
            } else if (seen != wanted) {
                if (i > 8) std::swap(cases[i], cases[i / 2]); // what refuted one will soon refute the next
                return 0;
            }
        }
        return (usedRuns << goal.runBits) + goal.highestWeight * static_cast<double>(highest + 1);
    }

    Candidate candidate(std::uint64_t multiplier, double cost) const {
        Candidate result{multiplier, cost, 0, {}};
        for (const Case& each : cases) {
            const std::uint64_t index = each.blockers * multiplier >> shift;
            result.used[index / 64] |= std::uint64_t{1} << index % 64;
            result.words = std::max(result.words, static_cast<int>(index / 64) + 1);
        }
        return result;
    }

    Pattern runsOf(const Candidate& candidate) const {
        Pattern result{};
        for (int index = 0; index < candidate.span(); ++index) {
            const int run = index >> goal.runBits;
            if ((candidate.used[index / 64] >> index % 64 & 1) != 0) result[run / 64] |= std::uint64_t{1} << run % 64;
        }
        return result;
    }

private:
    struct Case {
        Bitboard blockers;
        std::uint32_t attacks; // the number of the attack set
    };
    Goal goal;
    int shift;
    std::vector<Case> cases;
    std::array<std::uint32_t, 4096> table{}; // epoch and attack set of the last multiplier that used the index
    std::array<std::uint32_t, 4096> runs{};  // epoch of the last multiplier that used the run
    std::uint32_t epoch = 0;
};

// The best multipliers seen for one square, no two with the same runs, lowest cost first.
class Pool {
public:
    bool wants(double cost) const { return members.size() < poolSize || cost <= members.back().candidate.cost; }

    void offer(const Candidate& candidate, const Pattern& runs) {
        if (!patterns.insert(runs).second) return;
        if (members.size() == poolSize) {
            patterns.erase(members.back().runs);
            members.pop_back();
        }
        // Ahead of its equals, so that these get replaced and the pool does not stay with one family.
        const auto place =
            std::lower_bound(members.begin(), members.end(), candidate.cost,
                             [](const Member& member, double cost) { return member.candidate.cost < cost; });
        members.insert(place, {candidate, runs});
    }

    void addTo(std::vector<Candidate>& all) const {
        for (const Member& member : members) all.push_back(member.candidate);
    }
    bool empty() const { return members.empty(); }

private:
    struct Member {
        Candidate candidate;
        Pattern runs;
    };
    std::vector<Member> members;
    std::set<Pattern> patterns;
};

std::uint64_t randomStart(Random& random) {
    if (random.below(2) == 0) return random() & random() & random();
    std::uint64_t multiplier = 0; // long runs of ones, whose borrows bring indices together
    for (int terms = 3 + random.below(7); terms > 0; --terms) {
        const std::uint64_t power = std::uint64_t{1} << random.below(64);
        multiplier += random.below(2) == 0 ? power : 0 - power;
    }
    return multiplier;
}

std::uint64_t changed(std::uint64_t multiplier, Random& random) {
    for (int changes = 1 + random.below(3); changes > 0; --changes) {
        const std::uint64_t power = std::uint64_t{1} << random.below(64);
        switch (random.below(3)) {
        case 0: multiplier += power; break;
        case 1: multiplier -= power; break;
        default: multiplier ^= power; break;
        }
    }
    return multiplier;
}

void climb(int block, const Goal& goal, long tries, Random& random, std::vector<Candidate>& found) {
    Judge judge(block, goal);
    Pool pool;
    while (tries > 0 || pool.empty()) {
        std::uint64_t multiplier = randomStart(random);
        double cost = judge.costOf(multiplier);
        --tries;
        if (cost == 0) continue;
        if (pool.empty()) { // the start may be all that a square with few good multipliers has
            const Candidate candidate = judge.candidate(multiplier, cost);
            pool.offer(candidate, judge.runsOf(candidate));
        }
        double least = cost;
        for (int stale = 0; stale < patience && tries > 0; ++stale, --tries) {
            const std::uint64_t next = changed(multiplier, random);
            const double nextCost = judge.costOf(next);
            if (nextCost == 0) continue;
            const double temperature = 0.02 * cost * (1.0 - static_cast<double>(stale) / patience);
            if (nextCost > cost && random.unit() >= std::exp((cost - nextCost) / temperature)) continue;
            multiplier = next;
            cost = nextCost;
            if (pool.wants(cost)) {
                const Candidate candidate = judge.candidate(multiplier, cost);
                pool.offer(candidate, judge.runsOf(candidate));
            }
            if (cost < least) {
                least = cost;
                stale = 0;
            }
        }
    }
    pool.addTo(found);
}

using Pools = std::vector<std::vector<Candidate>>;

class Layout {
public:
    explicit Layout(const Pools& all) : pools(&all) {}

    // Places a block so that it ends low: of the sample of its candidates, each at the lowest offset where it fits,
    // the one with the least sum of offset and weighted span. Weights above 1 prefer the compact ones, which leave
    // fewer holes.
    void place(int block, std::size_t sample, double spanWeight, Random& random) {
        const std::vector<Candidate>& candidates = (*pools)[block];
        double least = 1e9;
        Placement best{};
        const bool all = sample >= candidates.size();
        for (std::size_t i = 0; i < (all ? candidates.size() : sample); ++i) {
            const Candidate& candidate = candidates[all ? i : random() % candidates.size()];
            const double spanCost = spanWeight * candidate.span();
            const int limit = static_cast<int>(std::min<double>(highestOffset, std::ceil(least - spanCost)));
            const int offset = lowestFit(candidate, limit);
            if (offset >= limit || offset + spanCost >= least) continue;
            least = offset + spanCost;
            best = {&candidate, offset};
        }
        placements[block] = best;
        mark(best);
    }

    void remove(int block) {
        mark(placements[block]); // marking twice takes it away
        placements[block].candidate = nullptr;
    }

    // Where the block's used indices end; its nominal length may reach farther.
    int endOf(int block) const {
        const Placement& placement = placements[block];
        return placement.candidate != nullptr ? placement.offset + placement.candidate->span() : 0;
    }
    int end() const {
        int result = 0;
        for (int block = 0; block < blocks; ++block) result = std::max(result, endOf(block));
        return result;
    }
    // As long as no index that the shifts allow leads outside.
    int size() const {
        int result = 0;
        for (int block = 0; block < blocks; ++block) {
            result = std::max(result, placements[block].offset + lengthOf(block));
        }
        return result;
    }
    int used() const {
        int result = 0;
        for (const std::uint64_t word : taken) result += helvan::popCount(word);
        return result;
    }
    // Besides the end it counts how low all entries lie, so that holes move up to where the last blocks can use them.
    double energy() const {
        double sum = 0;
        for (int word = 0; word < words; ++word) sum += helvan::popCount(taken[word]) * 64.0 * word;
        return end() + sum / 90000;
    }
    std::uint64_t multiplierOf(int block) const { return placements[block].candidate->multiplier; }
    int offsetOf(int block) const { return placements[block].offset; }

private:
    struct Placement {
        const Candidate* candidate;
        int offset;
    };

    // Index 0 belongs to the empty board and is always used: only free entries can be offsets.
    int lowestFit(const Candidate& candidate, int limit) const {
        for (int offset = 0; offset < limit; offset += offsetStep) {
            if ((taken[offset / 64] >> offset % 64 & 1) == 0 && fits(candidate, offset)) return offset;
        }
        return limit;
    }
    bool fits(const Candidate& candidate, int offset) const {
        const std::uint64_t* at = &taken[offset / 64];
        const int low = offset % 64;
        for (int i = 0; i < candidate.words; ++i) {
            const std::uint64_t there = low == 0 ? at[i] : at[i] >> low | at[i + 1] << (64 - low);
            if ((there & candidate.used[i]) != 0) return false;
        }
        return true;
    }
    void mark(const Placement& placement) {
        std::uint64_t* at = &taken[placement.offset / 64];
        const int low = placement.offset % 64;
        for (int i = 0; i < placement.candidate->words; ++i) {
            at[i] ^= placement.candidate->used[i] << low;
            if (low != 0) at[i + 1] ^= placement.candidate->used[i] >> (64 - low);
        }
    }

    static constexpr int words = 4096;
    static constexpr int highestOffset = words * 64 - 8192;
    const Pools* pools;
    std::array<std::uint64_t, words> taken{};
    std::array<Placement, blocks> placements{};
};

constexpr std::size_t everything = ~std::size_t{0};

Pools findCandidates(long tries, Random& random) {
    Pools pools(blocks);
    for (int block = 0; block < blocks; ++block) {
        std::vector<Candidate>& pool = pools[block];
        if (isRook(block)) {
            for (const Goal& goal : rookGoals) climb(block, goal, tries, random, pool);
        } else {
            for (const Goal& goal : bishopGoals) climb(block, goal, tries / 4, random, pool);
        }
        int shortest = lengthOf(block);
        for (const Candidate& candidate : pool) shortest = std::min(shortest, candidate.span());
        std::fprintf(stderr, "%s %2d: %3zu multipliers, the shortest block %d\n", isRook(block) ? "rook" : "bishop",
                     block % squares, pool.size(), shortest);
    }
    return pools;
}

// Comes behind all others: the array must reach a rook's whole length beyond the last rook's offset anyway, and a
// corner's block, which needs nearly all of its length, wastes least of that.
constexpr int lastBlock = 0;

std::vector<int> placingOrder(const Pools& pools) {
    std::array<int, blocks> shortest{};
    std::vector<int> order;
    for (int block = 0; block < blocks; ++block) {
        shortest[block] = lengthOf(block);
        for (const Candidate& each : pools[block]) shortest[block] = std::min(shortest[block], each.span());
        if (block != lastBlock) order.push_back(block);
    }
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return shortest[a] > shortest[b]; });
    return order;
}

Layout greedyLayout(const Pools& pools, const std::vector<int>& order, Random& random) {
    Layout best(pools);
    for (const double spanWeight : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        Layout layout(pools);
        for (const int block : order) layout.place(block, everything, spanWeight, random);
        std::fprintf(stderr, "greedy, span weight %.2f: ends at %d, %d used\n", spanWeight, layout.end(),
                     layout.used());
        if (best.end() == 0 || layout.end() < best.end()) best = layout;
    }
    return best;
}

// Takes a few blocks out and places them again, among them mostly the one that reaches farthest.
Layout rearranged(const Layout& layout, const std::vector<int>& order, Random& random) {
    std::set<int> out; // by their place in the order
    const int end = layout.end();
    const int near = random.below(end);
    const bool local = random.below(2) == 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (layout.endOf(order[i]) == end && random.below(4) != 0) out.insert(static_cast<int>(i));
    }
    for (int more = 2 + random.below(10); more > 0; --more) {
        const int i = random.below(static_cast<int>(order.size()));
        if (!local || std::abs(layout.offsetOf(order[i]) - near) < 2 * lengthOf(0)) out.insert(i);
    }
    std::vector<int> again(out.begin(), out.end());
    if (random.below(2) == 0) {
        for (int i = static_cast<int>(again.size()) - 1; i > 0; --i) std::swap(again[i], again[random.below(i + 1)]);
    }
    Layout next = layout;
    for (const int i : again) next.remove(order[i]);
    const double spanWeight = 0.8 + 1.5 * random.unit();
    for (const int i : again) next.place(order[i], 64, spanWeight, random);
    return next;
}

Layout improved(Layout layout, const std::vector<int>& order, long rounds, Random& random) {
    Layout best = layout;
    double energy = layout.energy();
    double temperature = 3;
    for (long round = 0; round < rounds; ++round, temperature -= 3.0 / static_cast<double>(rounds)) {
        const Layout next = rearranged(layout, order, random);
        const double nextEnergy = next.energy();
        if (nextEnergy > energy && random.unit() >= std::exp((energy - nextEnergy) / temperature)) continue;
        layout = next;
        energy = nextEnergy;
        if (layout.end() >= best.end()) continue;
        best = layout;
        std::fprintf(stderr, "round %ld: ends at %d, %d used\n", round, best.end(), best.used());
    }
    return best;
}

void printTable(const char* name, const Layout& layout, int first) {
    std::printf("constexpr std::array<Magic, 64> %s = {{\n", name);
    for (int square = 0; square < squares; ++square) {
        const int block = first + square;
        std::printf("%s{0x%016llx, %6d},%s", square % 2 == 0 ? "    " : " ",
                    static_cast<unsigned long long>(layout.multiplierOf(block)), layout.offsetOf(block),
                    square % 2 == 1 ? "\n" : "");
    }
    std::printf("}};\n");
}

} // namespace

int main(int argc, char** argv) {
    Random random{argc > 1 ? std::strtoull(argv[1], nullptr, 0) : 1};
    const long tries = argc > 2 ? std::atol(argv[2]) : 1'000'000;
    const long rounds = argc > 3 ? std::atol(argv[3]) : 20'000;

    const Pools pools = findCandidates(tries, random);
    const std::vector<int> order = placingOrder(pools);
    Layout layout = improved(greedyLayout(pools, order, random), order, rounds, random);
    layout.place(lastBlock, everything, 0, random);
    std::fprintf(stderr, "%d entries, %d of them used\n", layout.size(), layout.used());

    std::printf("inline constexpr int slidingAttacksSize = %d;\n\n", layout.size());
    printTable("rookMagic", layout, 0);
    std::printf("\n");
    printTable("bishopMagic", layout, squares);
}
