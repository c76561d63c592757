// SPDX-License-Identifier: MIT
//
// What the benchmark searches: openings, middlegames and endings, quiet and tactical.
#pragma once

namespace helvan {

// clang-format off
inline constexpr const char* benchPositions[] = {
    "r4qnk/p1p5/5r1b/3P1b1p/2p2N2/2N4P/PP1QB3/2K2RR1 w - -",
    "5rk1/1npbnppp/3p4/1p1Pp1b1/1P2P3/2P1N3/2BB1PPP/q3RNK1 w - -",
    "2b1q3/p3b1k1/1p2B2p/4Pp2/1P1r1Pp1/P3N1P1/3Q2P1/6K1 w - -",
    "3r4/q2np1k1/6pp/2pPp1b1/2N1N3/1P4PQ/r3RP2/3R2K1 w - -",
    "8/pp2r1k1/2p1p3/3pP2p/1P1P1P1P/P5KR/8/8 w - -",
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - -",
    "8/8/1p1r1k2/p1pPN1p1/P3KnP1/1P6/8/3R4 b - -",
    "4k3/8/8/8/8/8/4P3/4K3 w - -",
    "8/5pk1/4p1p1/7P/5P2/5K2/4B3/2b5 w - -",
    "6k1/5p2/6p1/8/7p/8/6PP/6K1 b - -",
    "r1bq1rk1/ppp2pbp/2np1np1/3Pp3/4P3/2NB1N1P/PPP2PP1/R1BQ1RK1 b - -",
    "rnbq1rk1/pp3ppp/4pn2/2b5/2p5/2N1PN2/PPQ1BPPP/R1B1K2R w KQ -",
    "rn1qkbnr/pp2pppp/2p5/3p1b2/2P2P2/4P3/PP1P2PP/RNBQKBNR w KQkq -",
    "rn1qkb1r/ppp2ppp/4pn2/3p4/3P4/1P3P1P/PBP2PP1/RN1QKB1R w KQkq -",
    "rnbqk2r/pp1p1pbp/4pnp1/2pP4/2P5/4PN2/PP3PPP/RNBQKB1R w KQkq -",
    "r1bqk2r/pppn1ppp/3bpn2/3p4/3P1B2/2PBP3/PP3PPP/RN1QK1NR w KQkq -",
    "rnbqkb1r/ppp2ppp/3ppn2/6B1/3P4/2P5/PP2PPPP/RN1QKBNR w KQkq -",
    "rnbq1rk1/pp2p1bp/2pp1np1/5p2/2PP1B2/2N1PN2/PP2BPPP/R2QK2R w KQ -",
    "rnbqk1nr/pp2ppbp/2p3p1/3p4/3P4/1P3NP1/P1P1PP1P/RNBQKB1R w KQkq -",
    "rnbqk2r/ppp1bppp/3p1n2/8/3NP3/2N4P/PPP2PP1/R1BQKB1R b KQkq -",
    "r1b1kb1r/pp1npppp/1qp2n2/3p4/3P1B2/1P2PN1P/P1P2PP1/RN1QKB1R b KQkq -",
    "r1bqk2r/pp2ppbp/2n2np1/2pp4/5P2/1P2PN2/PBPPB1PP/RN1QK2R w KQkq -",
    "r1bqkb1r/pp2pp1p/2np1np1/2p5/4P3/3B1N1P/PPPP1PP1/RNBQR1K1 b kq -",
    "rnbqkbnr/1p3ppp/p3p3/2pp4/3P4/P1P2N1P/1P2PPP1/RNBQKB1R b KQkq -",
    "7k/p7/1R5K/6r1/6p1/6P1/8/8 w - -",
    "1k5r/pppbn1pp/4q1r1/1P3p2/2NPp3/1QP5/P4PPP/R1B1R1K1 w - -",
    "1r1r2k1/4pp1p/2p1b1p1/p3R3/RqBP4/4P3/1PQ2PPP/6K1 b - -",
    "r1br2k1/pp2bppp/2nppn2/8/2P1PB2/2N2P2/PqN1B1PP/R2Q1R1K w - -",
    "k4r2/1R4pb/1pQp1n1p/3P4/5p1P/3P2P1/r1q1R2K/8 w - -",
    "3qrbk1/ppp1r2n/3pP2p/3P4/2P4P/1P3Q2/PB6/R4R1K w - -",
    "r3r1k1/pp1n1ppp/2p5/4Pb2/2B2P2/B1P5/P5PP/R2R2K1 w - -",
    "3rr1k1/ppqbRppp/2p5/8/3Q1n2/2P3N1/PPB2PPP/3R2K1 w - -",
    "8/k7/p7/3Qp2P/n1P5/3KP3/1q6/8 b - -",
    "r2r2k1/pb3ppp/1p1bp3/7q/3n2nP/PP1B2P1/1B1N1P2/RQ2NRK1 b - -",
    "r2r2k1/2p2ppp/p7/1p2P1n1/P6q/5P2/1PB1QP1P/R5RK b - -",
    "2k4r/1pr1n3/p1p1q2p/5pp1/3P1P2/P1P1P3/1R2Q1PP/1RB3K1 w - -",
    "r1bq3r/ppppR1p1/5n1k/3P4/6pP/3Q4/PP1N1PP1/5K1R w - -",
    "6k1/6p1/2p4p/4Pp2/4b1qP/2Br4/1P2RQPK/8 b - -",
    "qn1kr2r/1pRbb3/pP5p/P2pP1pP/3N1pQ1/3B4/3B1PP1/R5K1 w - -",
    "2rq4/1b2b1kp/p3p1p1/1p1nNp2/7P/1B2B1Q1/PP3PP1/3R2K1 w - -",
    "r1b2rk1/ppqn1p1p/2n1p1p1/2b3N1/2N5/PP1BP3/1B3PPP/R2QK2R w KQ -",
    "5bk1/p4ppp/Qp6/4B3/1P6/Pq2P1P1/2rr1P1P/R4RK1 b - -",
    "r1b1qrk1/1p3ppp/p1p5/3Nb3/5N2/P7/1P4PQ/K1R1R3 w - -",
    "3r2k1/pb1q1pp1/1p2pb1p/8/3N4/P2QB3/1P3PPP/1Br1R1K1 w - -",
    "2b2rk1/p1p4p/2p1p1p1/br2N1Q1/1p2q3/8/PB3PPP/3R1RK1 w - -",
    "r5k1/pQp2qpp/8/4pbN1/3P4/6P1/PPr4P/1K1R3R b - -",
    "5r1k/1p4pp/3q4/3Pp1R1/8/8/PP4PP/4Q1K1 b - -",
    "r1bq1rk1/ppp2ppp/2np4/2bN1PN1/2B1P3/3p4/PPP2nPP/R1BQ1K1R w - -",
    "2r1r1k1/pp1q1ppp/3p1b2/3P4/3Q4/5N2/PP2RPPP/4R1K1 w - -",
    "2R5/2R4p/5p1k/6n1/8/1P2QPPq/r7/6K1 w - -"};
// clang-format on

} // namespace helvan
