// Collections.h - MFC's growable arrays and string-keyed hash maps.
//
//   CStringArray fields;
//   fields.Add(L"a");
//   fields[0];             // "a"
//   fields.GetAt(5);       // throws CInvalidArgException*
//
//   CMapStringToString map;
//   map[L"KEY"] = L"value";
//   for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
//       CString key, value;
//       map.GetNextAssoc(pos, key, value);
//   }
//
// Indexes outside an array throw CInvalidArgException* as MFC does; the
// catcher releases it with Delete().
#pragma once
#include "platform/CString.h"
#include "platform/Throw.h"

#include <utility>
#include <vector>

struct __POSITION {};
typedef __POSITION* POSITION;

// A growable array of TYPE; ARG_TYPE is how elements are passed in.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray
{
public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(m_data.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    bool IsEmpty() const { return m_data.empty(); }

    void SetSize(INT_PTR newSize, INT_PTR growBy = -1)
    {
        (void)growBy;
        if (newSize < 0)
            AfxThrowInvalidArgException();
        m_data.resize(static_cast<size_t>(newSize));
    }
    void FreeExtra() { m_data.shrink_to_fit(); }
    void RemoveAll() { m_data.clear(); }

    const TYPE& GetAt(INT_PTR index) const { return m_data[Checked(index)]; }
    void SetAt(INT_PTR index, ARG_TYPE element) { m_data[Checked(index)] = element; }
    TYPE& ElementAt(INT_PTR index) { return m_data[Checked(index)]; }
    const TYPE& ElementAt(INT_PTR index) const { return m_data[Checked(index)]; }
    const TYPE& operator[](INT_PTR index) const { return GetAt(index); }
    TYPE& operator[](INT_PTR index) { return ElementAt(index); }

    TYPE* GetData() { return m_data.empty() ? nullptr : m_data.data(); }
    const TYPE* GetData() const { return m_data.empty() ? nullptr : m_data.data(); }

    void SetAtGrow(INT_PTR index, ARG_TYPE element)
    {
        if (index < 0)
            AfxThrowInvalidArgException();
        if (index >= GetSize())
            m_data.resize(static_cast<size_t>(index) + 1);
        m_data[static_cast<size_t>(index)] = element;
    }
    // Returns the new element's index.
    INT_PTR Add(ARG_TYPE element)
    {
        m_data.push_back(element);
        return GetUpperBound();
    }
    // Returns the index of the first appended element.
    INT_PTR Append(const CArray& other)
    {
        INT_PTR first = GetSize();
        if (&other == this) {
            std::vector<TYPE> copy(other.m_data);
            m_data.insert(m_data.end(), copy.begin(), copy.end());
        } else {
            m_data.insert(m_data.end(), other.m_data.begin(), other.m_data.end());
        }
        return first;
    }
    void Copy(const CArray& other)
    {
        if (&other != this)
            m_data = other.m_data;
    }
    // An index past the end grows the array, as MFC does.
    void InsertAt(INT_PTR index, ARG_TYPE element, INT_PTR count = 1)
    {
        if (index < 0 || count <= 0)
            AfxThrowInvalidArgException();
        TYPE value(element);  // `element` may live inside this array
        if (index > GetSize())
            m_data.resize(static_cast<size_t>(index));
        m_data.insert(m_data.begin() + index, static_cast<size_t>(count), value);
    }
    void InsertAt(INT_PTR start, const CArray* other)
    {
        if (other == nullptr || start < 0)
            AfxThrowInvalidArgException();
        std::vector<TYPE> copy(other->m_data);
        if (start > GetSize())
            m_data.resize(static_cast<size_t>(start));
        m_data.insert(m_data.begin() + start, copy.begin(), copy.end());
    }
    void RemoveAt(INT_PTR index, INT_PTR count = 1)
    {
        if (index < 0 || count < 0 || index + count > GetSize())
            AfxThrowInvalidArgException();
        m_data.erase(m_data.begin() + index, m_data.begin() + index + count);
    }

private:
    size_t Checked(INT_PTR index) const
    {
        if (index < 0 || index >= GetSize())
            AfxThrowInvalidArgException();
        return static_cast<size_t>(index);
    }

    std::vector<TYPE> m_data;
};

// A growable array of CString.
class QM_API CStringArray : public CArray<CString, const CString&>
{
public:
    INT_PTR Add(const wchar_t* text) { return CArray::Add(CString(text)); }
    INT_PTR Add(const CString& text) { return CArray::Add(text); }
};

// A growable array of 32-bit unsigned integers.
class QM_API CUIntArray : public CArray<UINT, UINT>
{
};

// A chained hash map keyed by CString, with MFC's hash function, its fixed
// bucket count (17 unless InitHashTable says otherwise) and its iteration.
template <class VALUE, class ARG_VALUE>
class CStringKeyedMap
{
public:
    CStringKeyedMap() = default;
    CStringKeyedMap(const CStringKeyedMap&) = delete;
    CStringKeyedMap& operator=(const CStringKeyedMap&) = delete;
    ~CStringKeyedMap() { RemoveAll(); }

    INT_PTR GetCount() const { return m_count; }
    INT_PTR GetSize() const { return m_count; }
    bool IsEmpty() const { return m_count == 0; }
    UINT GetHashTableSize() const { return m_buckets.empty() ? m_tableSize : static_cast<UINT>(m_buckets.size()); }

    bool Lookup(const wchar_t* key, VALUE& value) const
    {
        const Assoc* assoc = Find(key);
        if (assoc == nullptr)
            return false;
        value = assoc->value;
        return true;
    }
    VALUE& operator[](const wchar_t* key)
    {
        Assoc* assoc = Find(key);
        if (assoc == nullptr)
            assoc = Insert(key);
        return assoc->value;
    }
    void SetAt(const wchar_t* key, ARG_VALUE value) { (*this)[key] = value; }

    bool RemoveKey(const wchar_t* key)
    {
        if (m_buckets.empty())
            return false;
        Assoc** link = &m_buckets[HashKey(key) % m_buckets.size()];
        for (; *link != nullptr; link = &(*link)->next) {
            if ((*link)->key == key) {
                Assoc* dead = *link;
                *link = dead->next;
                delete dead;
                --m_count;
                return true;
            }
        }
        return false;
    }
    void RemoveAll()
    {
        for (Assoc* head : m_buckets)
            while (head != nullptr) {
                Assoc* next = head->next;
                delete head;
                head = next;
            }
        m_buckets.clear();
        m_count = 0;
    }

    // Sizes the bucket table; entries already present are redistributed.
    void InitHashTable(UINT size, bool allocNow = true)
    {
        if (size == 0)
            size = 1;
        m_tableSize = size;
        if (!allocNow && m_buckets.empty())
            return;
        std::vector<Assoc*> old;
        old.swap(m_buckets);
        m_buckets.assign(size, nullptr);
        for (Assoc* head : old)
            while (head != nullptr) {
                Assoc* next = head->next;
                Assoc*& bucket = m_buckets[head->hash % size];
                head->next = bucket;
                bucket = head;
                head = next;
            }
    }

    POSITION GetStartPosition() const
    {
        return m_count == 0 ? nullptr : reinterpret_cast<POSITION>(FirstFrom(0));
    }
    void GetNextAssoc(POSITION& pos, CString& key, VALUE& value) const
    {
        const Assoc* assoc = reinterpret_cast<const Assoc*>(pos);
        if (assoc == nullptr)
            AfxThrowInvalidArgException();
        key = assoc->key;
        value = assoc->value;
        const Assoc* next = assoc->next != nullptr ? assoc->next : FirstFrom(assoc->hash % m_buckets.size() + 1);
        pos = reinterpret_cast<POSITION>(const_cast<Assoc*>(next));
    }

    static UINT HashKey(const wchar_t* key)
    {
        UINT hash = 0;
        for (; key != nullptr && *key != L'\0'; ++key)
            hash = (hash << 5) + hash + static_cast<UINT>(*key);
        return hash;
    }

private:
    struct Assoc
    {
        Assoc* next;
        UINT hash;
        CString key;
        VALUE value;
    };

    Assoc* Find(const wchar_t* key) const
    {
        if (m_buckets.empty())
            return nullptr;
        UINT hash = HashKey(key);
        for (Assoc* a = m_buckets[hash % m_buckets.size()]; a != nullptr; a = a->next)
            if (a->hash == hash && a->key == (key != nullptr ? key : L""))
                return a;
        return nullptr;
    }
    Assoc* Insert(const wchar_t* key)
    {
        if (m_buckets.empty())
            m_buckets.assign(m_tableSize, nullptr);
        UINT hash = HashKey(key);
        Assoc*& bucket = m_buckets[hash % m_buckets.size()];
        bucket = new Assoc{bucket, hash, CString(key), VALUE()};
        ++m_count;
        return bucket;
    }
    Assoc* FirstFrom(size_t bucket) const
    {
        for (; bucket < m_buckets.size(); ++bucket)
            if (m_buckets[bucket] != nullptr)
                return m_buckets[bucket];
        return nullptr;
    }

    std::vector<Assoc*> m_buckets;
    UINT m_tableSize = 17;
    INT_PTR m_count = 0;
};

// A hash map from CString to CString.
class QM_API CMapStringToString : public CStringKeyedMap<CString, const wchar_t*>
{
};

// A hash map from CString to an untyped pointer the caller owns.
class QM_API CMapStringToPtr : public CStringKeyedMap<void*, void*>
{
};
