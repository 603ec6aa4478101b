#include "VexaHistoryMemo.h"

VexaHistoryMemo::~VexaHistoryMemo() = default;
