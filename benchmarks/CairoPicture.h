#pragma once

#include <cairo.h>

/// A picture that Cairo draws on the processor, in pixels from the lower left corner, as the windows beside it.
class CairoPicture
{
public:
    CairoPicture(int width, int height)
        : mSurface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)), mContext(cairo_create(mSurface))
    {
        cairo_translate(mContext, 0.0, height);
        cairo_scale(mContext, 1.0, -1.0);
    }

    ~CairoPicture()
    {
        cairo_destroy(mContext);
        cairo_surface_destroy(mSurface);
    }

    CairoPicture(const CairoPicture&) = delete;
    CairoPicture& operator=(const CairoPicture&) = delete;

    cairo_t* context() const { return mContext; }

    /// Completes the drawing and clears the picture for the next one.
    void finishFrame() const
    {
        cairo_surface_flush(mSurface);
        cairo_save(mContext);
        cairo_set_operator(mContext, CAIRO_OPERATOR_CLEAR);
        cairo_paint(mContext);
        cairo_restore(mContext);
    }

private:
    cairo_surface_t* mSurface;
    cairo_t* mContext;
};
