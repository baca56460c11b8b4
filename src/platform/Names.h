// File names as text, for the hot path of a walk.
#pragma once

#include <QByteArray>
#include <QString>

// What NameFromBytes gives, in the memory that the text has already where nobody shares it.
void AssignName(QString& name, QByteArrayView bytes);
