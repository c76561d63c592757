// SPDX-License-Identifier: MIT
#include "board/advance.h"

#include <cassert>
#include <cstdio>

#include "board/attacks.h"
#include "board/display.h"
#include "board/move_text.h"
#include "board/moves.h"
#include "board/piece_square.h"
#include "board/validity.h"

namespace helvan {

namespace {

// The steps of a move on the child's boards and sums. A phantom, a piece that no board holds, changes keys and
// sums only: there is no board to change.

void toggleOnBoards(Position& child, Colour colour, PieceType type, Bitboard squares) {
    if (type == phantom) return;
    child.of(colour, type) ^= squares;
    child.of(colour, allPieces) ^= squares;
}

void relocate(Position& child, Colour colour, PieceType type, Square from, Square to) {
    const int fromIndex = pieceIndex(colour, type, from);
    const int toIndex = pieceIndex(colour, type, to);
    child.key ^= pieceKeys[fromIndex] ^ pieceKeys[toIndex];
    child.pawnKey ^= pawnKeys[fromIndex] ^ pawnKeys[toIndex];
    child.pstScore += pieceSquareTable[toIndex] - pieceSquareTable[fromIndex];
    toggleOnBoards(child, colour, type, bit(from) ^ bit(to));
}

void removePiece(Position& child, Colour colour, PieceType type, Square square) {
    const int index = pieceIndex(colour, type, square);
    child.key ^= pieceKeys[index];
    child.pawnKey ^= pawnKeys[index];
    child.pstScore -= pieceSquareTable[index];
    child.materialKey -= materialKeys[materialIndex(colour, type)];
    child.phase = static_cast<std::uint16_t>(child.phase - phaseWeights[type]);
    toggleOnBoards(child, colour, type, bit(square));
}

void addPiece(Position& child, Colour colour, PieceType type, Square square) {
    const int index = pieceIndex(colour, type, square);
    child.key ^= pieceKeys[index];
    child.pawnKey ^= pawnKeys[index];
    child.pstScore += pieceSquareTable[index];
    child.materialKey += materialKeys[materialIndex(colour, type)];
    child.phase = static_cast<std::uint16_t>(child.phase + phaseWeights[type]);
    toggleOnBoards(child, colour, type, bit(square));
}

// What every move changes: the child is the parent with the other side to move.
void passTo(const Position& parent, Position& child, Move move) {
    child = parent;
    child.prev = &parent;
    child.capturedPiece = 0;
    child.movedPiece = 0;
    child.lastMove = move;
    ++child.fifty;
    child.evalScratch = evalNotComputed;
    if (parent.epSquare != 0) {
        child.key ^= epKeys[lowestBit(parent.epSquare)];
        child.epSquare = 0;
    }
    child.key ^= pieceKeys[white] ^ pieceKeys[black];
    ++child.ply;
}

PieceType moverType(const Position& parent, Colour mover, Move move) {
    const PieceType type = pieceTypeAt(parent, mover, moveFrom(move));
    if (type == phantom) {
        std::printf("\n ILLEGAL MOVE IN SEARCH\n  move in question: %s", moveText(move).c_str());
        printBoard(parent);
    }
    return type;
}

// What the move takes on its to-square, phantom for nothing.
PieceType victimType(const Position& parent, Colour enemy, Move move) {
    if (moveKind(move) != ordinaryMove && !isPromotion(move)) return phantom;
    const PieceType type = pieceTypeAt(parent, enemy, moveTo(move));
    if (type == king) std::printf("ERROR: king capture here\n");
    return type;
}

void takePiece(Position& child, Colour owner, PieceType type, Square square) {
    removePiece(child, owner, type, square);
    child.capturedPiece = static_cast<std::uint16_t>(type);
    child.fifty = 0;
}

void noteDoublePush(Position& child, Colour enemy, Square from, Square to) {
    if ((squaresBeside(bit(to)) & child.of(enemy, pawn)) == 0) return;
    const Square passed = (from + to) / 2;
    child.epSquare = bit(passed);
    child.key ^= epKeys[passed];
}

// Whether the move is one that the rules allow but for the king's safety: only then does the child add up.
[[maybe_unused]] bool isSound(const Position& parent, Move move) {
    const Bitboard from = bit(moveFrom(move));
    const Colour mover = parent.sideToMove();
    if (unplayableReason(parent) != nullptr) return false;
    switch (moveKind(move)) {
    case enPassant: return parent.epSquare == bit(moveTo(move)) && (parent.of(mover, pawn) & from) != 0;
    case castling:
        if ((parent.of(mover, rook) & bit(castlingRookFrom(moveTo(move)))) == 0) return false;
        if ((parent.of(mover, king) & from) == 0) return false;
        break;
    default: break;
    }
    return isPseudoLegal(parent, move) != 0;
}

} // namespace

void advance(const Position& parent, Position& child, Move move) {
    if (move == nullMove) {
        passTo(parent, child, move);
        child.inCheck = 0;
        return;
    }
    const Colour us = parent.sideToMove();
    const PieceType type = moverType(parent, us, move);
    advance(parent, child, move, type, victimType(parent, opponent(us), move));
}

void advance(const Position& parent, Position& child, Move move, PieceType mover, PieceType victim) {
    const Colour us = parent.sideToMove();
    const Colour enemy = opponent(us);
    const Square from = moveFrom(move);
    const Square to = moveTo(move);
    const int kind = moveKind(move);
    passTo(parent, child, move);
    child.movedPiece = static_cast<std::uint16_t>(mover);
    relocate(child, us, mover, from, to);
    child.touched |= bit(from) | bit(to);
    if (mover == pawn || kind != ordinaryMove) child.fifty = 0;

    switch (kind) {
    case castling: {
        const Square rookFrom = castlingRookFrom(to);
        const Square rookTo = castlingRookTo(from, to);
        relocate(child, us, rook, rookFrom, rookTo);
        child.touched |= bit(rookFrom) | bit(rookTo);
        break;
    }
    case enPassant: removePiece(child, enemy, pawn, enPassantVictim(move)); break;
    case doublePush: noteDoublePush(child, enemy, from, to); break;
    default:
        if (victim != phantom) takePiece(child, enemy, victim, to);
        if (kind != ordinaryMove) {
            removePiece(child, us, pawn, to);
            addPiece(child, us, promotedType(kind), to);
        }
        break;
    }
    child.key ^= castleKeys[castlingIndex(parent.touched)] ^ castleKeys[castlingIndex(child.touched)];
    assert(!isSound(parent, move) || incrementalStateAgrees(parent, child));
}

bool advanceLegally(const Position& parent, Position& child, Move move) {
    advance(parent, child, move);
    return settleCheck(child);
}

bool settleCheck(Position& child) {
    if (moverLeftInCheck(child)) return false;
    child.inCheck = static_cast<std::uint16_t>(inCheck(child, child.sideToMove()));
    return true;
}

Key likelyKeyAfter(const Position& position, Move move) {
    if (move == nullMove) return position.key ^ pieceKeys[white] ^ pieceKeys[black];
    const Colour us = position.sideToMove();
    return likelyKeyAfter(position, move, pieceTypeAt(position, us, moveFrom(move)),
                          pieceTypeAt(position, opponent(us), moveTo(move)));
}

bool incrementalStateAgrees(const Position& parent, const Position& child) {
    // Sums are compared as differences: setup from text leaves them 0 until a search refreshes them.
    const auto phaseStep = static_cast<std::uint16_t>(child.phase - parent.phase);
    if (phaseStep != static_cast<std::uint16_t>(phaseOf(child) - phaseOf(parent))) return false;
    if (child.pstScore - parent.pstScore != pstOf(child) - pstOf(parent)) return false;
    if (child.key != keyOf(child) || child.pawnKey != pawnKeyOf(child)) return false;
    if (child.materialKey != materialKeyOf(child)) return false;
    Bitboard all = 0;
    for (Colour colour : {white, black}) {
        Bitboard own = 0;
        for (PieceType type = pawn; type <= king; ++type) {
            if ((all & child.of(colour, type)) != 0) return false;
            all |= child.of(colour, type);
            own |= child.of(colour, type);
        }
        if (own != child.of(colour, allPieces)) return false;
    }
    return true;
}

} // namespace helvan
