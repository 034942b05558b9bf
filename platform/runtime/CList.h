#pragma once

#include <list>
#include <utility>

// A doubly linked list with positions that stay valid while their node lives.
template<class T>
class CList {
public:
    using POSITION = typename std::list<T>::iterator;

    bool IsEmpty() const { return m_nodes.empty(); }
    int GetCount() const { return static_cast<int>(m_nodes.size()); }
    T& GetHead() { return m_nodes.front(); }
    const T& GetHead() const { return m_nodes.front(); }
    T& GetTail() { return m_nodes.back(); }
    const T& GetTail() const { return m_nodes.back(); }
    void AddHead(T value) { m_nodes.push_front(std::move(value)); }
    void AddTail(T value) { m_nodes.push_back(std::move(value)); }
    T RemoveHead() {
        T value = std::move(m_nodes.front());
        m_nodes.pop_front();
        return value;
    }
    T RemoveTail() {
        T value = std::move(m_nodes.back());
        m_nodes.pop_back();
        return value;
    }
    void RemoveAt(POSITION position) { m_nodes.erase(position); }
    void RemoveAll() { m_nodes.clear(); }

    auto begin() { return m_nodes.begin(); }
    auto end() { return m_nodes.end(); }
    auto begin() const { return m_nodes.begin(); }
    auto end() const { return m_nodes.end(); }

private:
    std::list<T> m_nodes;
};
