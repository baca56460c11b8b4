#pragma once

// How the mouse stands to a button, a cell or a header section. The numbers are those of CellHotState.
enum class TPartState { Normal = 0, Hot = 1, Pressed = 2 };
