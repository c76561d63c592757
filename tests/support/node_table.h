// SPDX-License-Identifier: MIT
//
// Single nodes of a search as rows of text. The table of earlier searches tells each what its position is worth and
// what its moves lead to, so that a node's own rules are all that decides it.
#pragma once

#include <algorithm>
#include <map>
#include <sstream>
#include <tuple>

#include "board/move_picker.h"
#include "support/searching.h"

namespace helvan::testing {

inline constexpr int surely = 100; // so deep that no search is needed

struct Node {
    const char* fen = "";
    int depth = 0;
    Move move = nullMove;              // that the row is about,
    int leads = 99999, known = surely; // its score, if it has one of its own, and how deep the search for it was
    int moves = -900;                  // the score of all moves
    int beta = -400, window = 1;
    int eval = 0, entry = -90, bound = exactBound, hash = nullMove; // the table's score, depth, bound and move
    int ply = 1, odd = 0, carry = 0, fifty = 0, captured = 0, passes = 0, ep = 0;
    Move last = nullMove, excluded = nullMove, killer = nullMove, counter = nullMove;
};

class NodeTable : public Searching {
public:
    // The positions that rows name, each as "name pieces side", with a K behind the side where white may castle.
    explicit NodeTable(const std::string& positions) {
        std::istringstream text(positions);
        for (std::string name, pieces, side; text >> name >> pieces >> side;) {
            fens[name] = pieces + ' ' + side[0] + (side.size() > 1 ? " K -" : " - -");
        }
    }

    static constexpr int never = 40; // deeper than any move is searched

    virtual int search(const Node& node, std::uint64_t nodeLimit = 400) = 0;

    void tell(const Position& of, int score, int depth, int bound = exactBound, Move move = nullMove) {
        tables->transpositionTable.store(of.key, depth, score, static_cast<Bound>(bound), move, 0);
    }
    void tellMove(const Position& from, Move move, int score, int ply, int depth = surely) {
        tell(childOf(from, move), scoreToTable(-score, ply + 1), depth);
    }
    void tellMoves(const Position& from, int score, int ply) {
        for (const Move move : legalMovesOf(from)) tellMove(from, move, score, ply);
    }

    void prepare(const Node& node) {
        forget();
        position = positionOf(node.fen);
        position.pvPly = static_cast<std::uint8_t>((node.ply ^ node.odd) & 1);
        position.extensionCarry = static_cast<std::uint8_t>(node.carry);
        position.fifty = static_cast<std::uint16_t>(node.fifty);
        position.capturedPiece = static_cast<std::uint16_t>(node.captured);
        position.lastMove = node.last;
        if (node.ep != 0) position.epSquare = bit(node.ep);
        position.key = keyOf(position);
        tables->moveHistory.counterMove[position.sideToMove() * 7 * 4096 + (node.last & 4095)].move = node.counter;
        tell(position, node.eval, node.entry, node.bound, node.hash);
        tellMoves(position, node.moves, node.ply);
        if (node.leads != Node{}.leads) tellMove(position, node.move, node.leads, node.ply, node.known);
    }

    int score(Node node) {
        prepare(node);
        return search(node);
    }
    int made(Node node) { return score(node), nodes; }
    int searchesMoves(Node node) { return made(node) > 0; }
    int storedDepth(Node node) { return score(node), stored(position)->depth; }
    int scoreNotStored(Node node) {
        const int result = score(node);
        EXPECT_EQ(stored(position)->depth, node.entry);
        return result;
    }

    void expectStored(int depth, Bound bound, Move move, int score) const {
        const TTEntry* entry = stored(position);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(std::tuple(entry->depth, entry->bound(), entry->move, entry->score),
                  std::tuple(depth, bound, move, score));
    }

    // The least number up to high from which on the condition holds.
    template <typename Condition> static int least(int high, Condition holds) {
        int low = 0;
        while (low < high) {
            const int middle = (low + high) / 2;
            if (holds(middle))
                high = middle;
            else
                low = middle + 1;
        }
        return low;
    }

    // A row is "position depth [field value]... [move]"; behind the "=" stands what the probe finds. Moves may be named
    // by their number, as "#7": by the order in which they are tried while nothing is known of them.
    template <typename Test> void expectRows(int (Test::*probe)(Node), std::string rows) {
        std::replace(rows.begin(), rows.end(), ';', '\n');
        std::istringstream lines(rows);
        for (std::string row; std::getline(lines, row);) {
            const auto end = row.find('=');
            if (end == std::string::npos) continue;
            EXPECT_EQ((static_cast<Test*>(this)->*probe)(nodeOf(row.substr(0, end))), std::stoi(row.substr(end + 1)))
                << row;
        }
    }

    Node nodeOf(const std::string& row) const {
        static const std::map<std::string, int Node::*> fields = {
            {"leads", &Node::leads},   {"known", &Node::known},       {"moves", &Node::moves},
            {"beta", &Node::beta},     {"window", &Node::window},     {"eval", &Node::eval},
            {"entry", &Node::entry},   {"bound", &Node::bound},       {"hash", &Node::hash},
            {"ply", &Node::ply},       {"odd", &Node::odd},           {"carry", &Node::carry},
            {"fifty", &Node::fifty},   {"captured", &Node::captured}, {"passes", &Node::passes},
            {"ep", &Node::ep},         {"last", &Node::last},         {"excluded", &Node::excluded},
            {"killer", &Node::killer}, {"counter", &Node::counter}};
        std::istringstream text(row);
        Node node;
        std::string word;
        text >> word >> node.depth;
        node.fen = fens.at(word).c_str();
        while (text >> word) {
            const auto field = fields.find(word);
            if (field != fields.end()) text >> word;
            (field != fields.end() ? node.*field->second : node.move) = valueOf(word, positionOf(node.fen));
        }
        return node;
    }

    static int valueOf(const std::string& word, const Position& from) {
        static const std::map<std::string, int> bounds = {{"none", 0}, {"upper", 1}, {"lower", 2}, {"exact", 3}};
        if (bounds.contains(word)) return bounds.at(word);
        if (word[0] == '#') return inOrder(from).at(std::stoul(word.substr(1)) - 1);
        if (word[0] < 'a') return std::stoi(word);
        for (const Move move : movesOf(from)) {
            if (moveText(move) == word) return move;
        }
        return encodeMove(word[0] - 'a' + 8 * (word[1] - '1'), word[2] - 'a' + 8 * (word[3] - '1'));
    }

    static std::vector<Move> inOrder(const Position& from) {
        MovePicker picker(from, from.inCheck != 0 ? PickerKind::evasions : PickerKind::everyMove);
        std::vector<Move> moves;
        for (Move move = nextMove(picker); move > 0; move = nextMove(picker)) {
            if (isLegal(from, move)) moves.push_back(move);
        }
        return moves;
    }

    std::map<std::string, std::string> fens; // by the names that rows use
    Position position{};
    Move line[pvCapacity] = {};
    int nodes = 0;
};

} // namespace helvan::testing
