// Precompiled for every test without Qt.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "Plain.h"
