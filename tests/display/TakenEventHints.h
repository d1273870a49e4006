#pragma once

/// True in a run with ZOR_TAKE_EVENT_HINTS set. Whatever the display layer asks for by a hint is then taken
/// before it asks, so that its event types have other values.
bool eventHintsAreTaken();
