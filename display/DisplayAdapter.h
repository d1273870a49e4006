#pragma once

/// What the dialog asks of the viewer behind one of its views. Whoever makes an adapter deletes it.
class DisplayAdapter
{
public:
    virtual ~DisplayAdapter() = default;
};
