// Helpers shared by the tests: the toolkit in support/.
#pragma once

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "kvxlib.h"
#include "support/angles.h"
#include "support/reference.h"
