// SPDX-License-Identifier: MIT
#include "protocol/options.h"

#include <cstdio>

#include "book/settings.h"
#include "eval/parameters.h"
#include "search/settings.h"

namespace helvan {

const SpinParam spinParams[] = {{"King Safety Aggressiveness", &kingSafetyAggressiveness, 0, 10},
                                {"move overhead milliseconds", &moveOverheadMilliseconds, 0, 30000},
                                {"Drawscore", &drawScore, -50, 50},
                                {"", nullptr, 0, 0}};

const CheckParam checkParams[] = {{"use lmr", &useLmr},
                                  {"null move pruning", &nullMovePruning},
                                  {"deterministic", &deterministic},
                                  {"Best Line", &bestLineOnly},
                                  {"", nullptr}};

const TaperedParam taperedParams[] = {{"", nullptr, 0, 0}};

namespace {

const char* checkText(int value) { return value != 0 ? "true" : "false"; }

void printTapered(const TaperedParam& param, const char* lane, int value) {
    std::printf("option name %s %s type spin default %d min %d max %d\n", param.name, lane, value, param.min,
                param.max);
}

} // namespace

void printOptions() {
    std::printf("option name Ponder type check default true\n");
    std::printf("option name Hash type spin default %d min 0 max 4096\n", hashMegabytes);
    std::printf("option name OwnBook type check default %s\n", checkText(ownBook));
    std::printf("option name MultiPV type spin default %d min 1 max 99\n", multiPv);
    std::printf("option name Book File type string default %s\n", bookFileName);
    for (const TaperedParam* param = taperedParams; param->name[0] != '\0'; ++param) {
        printTapered(*param, "open", param->value->opening());
        printTapered(*param, "end", param->value->endgame());
    }
    for (const CheckParam* param = checkParams; param->name[0] != '\0'; ++param) {
        std::printf("option name %s type check default %s\n", param->name, checkText(*param->value));
    }
    for (const SpinParam* param = spinParams; param->name[0] != '\0'; ++param) {
        std::printf("option name %s type spin default %d min %d max %d\n", param->name, *param->value, param->min,
                    param->max);
    }
}

} // namespace helvan
