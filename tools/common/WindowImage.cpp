// WindowImage.cpp - screen captures of windows and PNG files through WIC.
#include "common/WindowImage.h"

#include <wincodec.h>

namespace qmimage {
namespace {

// Releases a COM interface when it goes out of scope.
template <class T>
struct ComRef
{
    ~ComRef()
    {
        if (p != nullptr)
            p->Release();
    }
    T* p = nullptr;
};

} // namespace

HRESULT SavePng(HBITMAP bitmap, const wchar_t* path)
{
    ComRef<IWICImagingFactory> factory;
    ComRef<IWICBitmap> source;
    ComRef<IWICStream> stream;
    ComRef<IWICBitmapEncoder> encoder;
    ComRef<IWICBitmapFrameEncode> frame;
    HRESULT hr = CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory.p));
    if (SUCCEEDED(hr))
        hr = factory.p->CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, &source.p);
    UINT width = 0, height = 0;
    if (SUCCEEDED(hr))
        hr = source.p->GetSize(&width, &height);
    if (SUCCEEDED(hr))
        hr = factory.p->CreateStream(&stream.p);
    if (SUCCEEDED(hr))
        hr = stream.p->InitializeFromFilename(path, GENERIC_WRITE);
    if (SUCCEEDED(hr))
        hr = factory.p->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder.p);
    if (SUCCEEDED(hr))
        hr = encoder.p->Initialize(stream.p, WICBitmapEncoderNoCache);
    if (SUCCEEDED(hr))
        hr = encoder.p->CreateNewFrame(&frame.p, nullptr);
    if (SUCCEEDED(hr))
        hr = frame.p->Initialize(nullptr);
    if (SUCCEEDED(hr))
        hr = frame.p->SetSize(width, height);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    if (SUCCEEDED(hr))
        hr = frame.p->SetPixelFormat(&format);
    if (SUCCEEDED(hr))
        hr = frame.p->WriteSource(source.p, nullptr);
    if (SUCCEEDED(hr))
        hr = frame.p->Commit();
    if (SUCCEEDED(hr))
        hr = encoder.p->Commit();
    return hr;
}

HBITMAP CaptureWindow(HWND window)
{
    RECT rect{};
    if (window == nullptr || !::GetWindowRect(window, &rect))
        return nullptr;
    const int width = rect.right - rect.left, height = rect.bottom - rect.top;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC screen = ::GetDC(nullptr);
    HBITMAP bitmap = ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HDC memory = ::CreateCompatibleDC(screen);
    if (bitmap != nullptr && memory != nullptr)
    {
        HGDIOBJ old = ::SelectObject(memory, bitmap);
        ::BitBlt(memory, 0, 0, width, height, screen, rect.left, rect.top, SRCCOPY);
        ::SelectObject(memory, old);
    }
    if (memory != nullptr)
        ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
    return bitmap;
}

} // namespace qmimage
