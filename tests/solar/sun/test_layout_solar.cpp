// Byte layout of the orbital-element records that cross the library boundary.
#include <gtest/gtest.h>

#include <cstddef>

#include "kvxlib.h"

static_assert(sizeof(OrbitElm) == 80, "OrbitElm is ten doubles");
static_assert(offsetof(OrbitElm, epoch) == 0);
static_assert(offsetof(OrbitElm, a) == 8);
static_assert(offsetof(OrbitElm, e) == 16);
static_assert(offsetof(OrbitElm, incl) == 24);
static_assert(offsetof(OrbitElm, node) == 32);
static_assert(offsetof(OrbitElm, peri) == 40);
static_assert(offsetof(OrbitElm, m) == 48);
static_assert(offsetof(OrbitElm, n) == 56);
static_assert(offsetof(OrbitElm, equinox) == 64);

static_assert(sizeof(CometElements) == 136);
static_assert(offsetof(CometElements, kind) == 0);
static_assert(offsetof(CometElements, number) == 4);
static_assert(offsetof(CometElements, designation) == 8);
static_assert(sizeof(((CometElements *)nullptr)->designation) == 32);
static_assert(offsetof(CometElements, perihelionJd) == 40);
static_assert(offsetof(CometElements, e) == 48);
static_assert(offsetof(CometElements, q) == 56);
static_assert(offsetof(CometElements, peri) == 64);
static_assert(offsetof(CometElements, node) == 72);
static_assert(offsetof(CometElements, incl) == 80);
static_assert(offsetof(CometElements, equinox) == 88);
static_assert(offsetof(CometElements, h) == 96);
static_assert(offsetof(CometElements, slope) == 104);
static_assert(offsetof(CometElements, epoch) == 112);
static_assert(offsetof(CometElements, validFrom) == 120);
static_assert(offsetof(CometElements, validTo) == 128);
