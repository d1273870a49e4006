#pragma once

#include "display/DisplaySettings.h"
#include "display/DisplayStage.h"

/// The objects that the fake viewers hand out; one of each for all of them. They answer by
/// FakeViewer::script() and record in FakeViewer::calls().
DisplaySettings& fakeSettings();
DisplayStage& fakeStage();
