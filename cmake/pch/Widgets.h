// Precompiled for every target over QtWidgets.
#pragma once

#include <QApplication>
#include <QLayout>
#include <QWidget>

#include "Core.h"
