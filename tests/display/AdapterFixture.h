#pragma once

#include "tests/display/AdapterTools.h"

#include <QtTest>

#include <memory>

/// A view and an adapter on the fake viewer, for a test class to inherit.
class AdapterFixture
{
protected:
    /// The view alone, and nothing left of earlier tests.
    void setUp()
    {
        FakeViewer::reset();
        FakeImageHeaders::reset();
        view = std::make_unique<RecordingView>();
    }

    /// With an adapter whose viewer is not started.
    void setUp(std::uint32_t features)
    {
        setUp();
        adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, features);
    }

    /// Each viewer goes with its adapter.
    void tearDown()
    {
        adapter.reset();
        view.reset();
        QCOMPARE(FakeViewer::living(), 0);
    }

    /// Makes the adapter and starts its viewer.
    void start(bool gpu, std::uint32_t features)
    {
        adapter = std::make_unique<DisplayAdapterQT>(view.get(), gpu, features);
        QVERIFY(!adapter->hasViewer());
        QVERIFY(prepare(imageOf(64, 48)));
    }

    bool prepare(const _ZorImage& image, bool force = false) { return adapter->prepareImage(&image, force); }

    std::unique_ptr<RecordingView> view;
    std::unique_ptr<DisplayAdapterQT> adapter;
};
