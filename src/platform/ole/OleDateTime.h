// OleDateTime.h - COleDateTime: an automation date (days since 30 December
// 1899, the time as the fraction) with a status, as MFC keeps it.
//
//   SYSTEMTIME st{};
//   picker.GetTime(&st);
//   CString text = COleDateTime(st).Format(L"%Y年%m月%d日");   // "2024年03月05日"
//
// A value is valid, invalid (a conversion failed) or null (no date at all,
// as a date picker without a check reports it). Format gives a null value an
// empty text and an invalid one the library's string 55296 when some module
// of the resource chain has it, else "Invalid DateTime".
#pragma once
#include "QMExport.h"
#include "platform/CString.h"

#include <oleauto.h>

class QM_API COleDateTime
{
public:
    enum DateTimeStatus { error = -1, valid = 0, invalid = 1, null = 2 };

    // 30 December 1899, midnight, valid.
    COleDateTime() = default;
    // Invalid when `time` names no date (month 13, day 0...).
    explicit COleDateTime(const SYSTEMTIME& time);
    COleDateTime(int year, int month, int day, int hour, int minute, int second);

    DateTimeStatus GetStatus() const { return m_status; }
    void SetStatus(DateTimeStatus status) { m_status = status; }
    // 0 when the parts name a date, else 1 with the status invalid.
    int SetDateTime(int year, int month, int day, int hour, int minute, int second);
    // FALSE unless the value is valid and converts.
    BOOL GetAsSystemTime(SYSTEMTIME& time) const;
    // The value through wcsftime's directives (at most 255 characters; a
    // longer result is empty), see above for null and invalid values.
    CString Format(const wchar_t* format) const;

    DATE m_dt = 0.0;
    DateTimeStatus m_status = valid;
};
