// The translucent colours of scenes: each as a constant, and all of them in order as texts and as names.
#pragma once

namespace VORN3D
{

#define VORN3D_PALETTE(COLOR)                                                                                \
    COLOR(LIGHTBLUE, "0 0.749 1 0.5")                                                                        \
    COLOR(DARKBLUE, "0 0.1 .803 0.5")                                                                        \
    COLOR(YELLOW, "1 1 0 0.5")                                                                               \
    COLOR(PINK, "1 0.411 0.705 0.5")                                                                         \
    COLOR(BLACK, "0.1 0.1 0.1 0.5")                                                                          \
    COLOR(LIGHTBROWN, "0.823 0.705 0.549 0.5")                                                               \
    COLOR(DARKBROWN, "0.545 0.271 0.074 0.5")                                                                \
    COLOR(ORANGE, "1 0.627 0 0.5")                                                                           \
    COLOR(PURPLE, "0.627 0.125 0.941 0.5")                                                                   \
    COLOR(GRAY, ".745 .745 .745 0.5")                                                                        \
    COLOR(LIGHTGRAY, ".445 .445 .445 0.5")                                                                   \
    COLOR(RED, "1 0 0 0.5")                                                                                  \
    COLOR(GREEN, "0 1 0 0.5")                                                                                \
    COLOR(WHITE, "1 1 1 0.5")                                                                                \
    COLOR(CRIMSON, ".86 .08 .24 0.5")                                                                        \
    COLOR(CDARKORANGE, "1 .55 0 0.5")                                                                        \
    COLOR(CGOLDENROD, ".85 .65 .13 0.5")                                                                     \
    COLOR(COLIVE, ".5 .5 .0 0.5")                                                                            \
    COLOR(CLAWNGREEN, "0.49\t0.99 0.00 0.5")                                                                 \
    COLOR(CGREENYELLOW, "0.68 1.00 0.18 0.5")                                                                \
    COLOR(CPALEGREEN, "0.60\t0.98 0.60 0.5")                                                                 \
    COLOR(CMEDSPRINGGREEN, "0.00 0.98 0.60 0.5")                                                             \
    COLOR(CLIGHTSEAGREAN, "0.13 0.70 0.67 0.5")                                                              \
    COLOR(CCYAN, "0.00 1.00 1.00 0.5")                                                                       \
    COLOR(CSTEELBLUE, "0.27 0.51 0.71 0.5")                                                                  \
    COLOR(MIDNIGHTBLUE, "0.10 0.10 0.44 0.5")                                                                \
    COLOR(CWHEAT, "0.96 0.87 0.7 0.5")

#define VORN3D_COLOR_CONSTANT(name, text) inline constexpr const char* name = text;
#define VORN3D_COLOR_TEXT(name, text) name,
#define VORN3D_COLOR_NAME(name, text) #name,

/// LIGHTBLUE, DARKBLUE and so on.
VORN3D_PALETTE(VORN3D_COLOR_CONSTANT)

inline constexpr const char* colorArray[] = {VORN3D_PALETTE(VORN3D_COLOR_TEXT)};
inline constexpr const char* colorNameArray[] = {VORN3D_PALETTE(VORN3D_COLOR_NAME)};

#undef VORN3D_COLOR_NAME
#undef VORN3D_COLOR_TEXT
#undef VORN3D_COLOR_CONSTANT
#undef VORN3D_PALETTE

} // namespace VORN3D
