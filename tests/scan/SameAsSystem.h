// Holds a walk against the system.
#pragma once

#include <QString>

// Expects that a walk of the folder finds what the system finds, entry by entry and to the byte.
void ExpectSameAsSystem(const QString& root);
