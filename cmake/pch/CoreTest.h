// Precompiled for every test without windows.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Core.h"
