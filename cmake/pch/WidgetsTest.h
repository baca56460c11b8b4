// Precompiled for every test with windows.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Widgets.h"
