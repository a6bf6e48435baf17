#pragma once

// A bare image view with its scene and layers, without the window around it,
// placed in a host widget of a known size. For tests that need exact control
// of the view size, or a view that has never been shown (view size 0 by 0).

#include "ImageLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"

#include <QApplication>
#include <QSize>
#include <QWidget>

#include <memory>

class StandaloneView
{
public:
    // The view fills a host widget of the given size; with show false nothing
    // is shown, so no resizeEvent has run and the view size stays 0 by 0.
    explicit StandaloneView(QSize viewSize = QSize(640, 480), bool show = true)
        : host(new QWidget)
        , view(new ImageCtrlView(host.get()))
    {
        view->CreateScene();
        host->resize(viewSize);
        view->setGeometry(0, 0, viewSize.width(), viewSize.height());
        if (show) {
            host->show();
            QApplication::processEvents();
        }
    }

    ImageCtrlScene* scene() const { return view->GetImageCtrlScene(); }
    ImageLayer* layer() const { return scene()->GetImageLayer(); }

    // Resizes the view so that its viewport gets exactly this size.
    void setViewportSize(QSize viewportSize)
    {
        const QSize extra = view->size() - view->viewport()->size();
        const QSize viewSize = viewportSize + extra;
        host->resize(host->size().expandedTo(viewSize));
        view->resize(viewSize);
        QApplication::processEvents();
    }

    std::unique_ptr<QWidget> host;
    ImageCtrlView* view;
};
