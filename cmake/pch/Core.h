// Precompiled for every target over QtCore.
#pragma once

#include <QString>
#include <QStringList>

#include <algorithm>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>
