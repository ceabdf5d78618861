#pragma once

#include "checker/report/Characters.h"
