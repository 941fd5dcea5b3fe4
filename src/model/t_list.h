// TList is the one container of the system: a doubly linked list of cells
// that point at objects made elsewhere.  The list never owns its data; the
// one list that does is emptied with Delete_Data.  Scalars are stored as
// pointers to heap values too.
#ifndef FW_MODEL_T_LIST_H
#define FW_MODEL_T_LIST_H

#include <ostream>

template <class T>
class TList;

template <class T>
class TList_Cell {
 public:
  explicit TList_Cell(T* data) : data_(data) {}

  T* Data() const { return data_; }
  TList_Cell* Next() const { return next_; }
  TList_Cell* Prior() const { return prior_; }

 private:
  friend class TList<T>;
  T* data_;
  TList_Cell* next_ = nullptr;
  TList_Cell* prior_ = nullptr;
};

template <class T>
class TList {
 public:
  TList() = default;
  TList(const TList&) = delete;
  TList& operator=(const TList&) = delete;
  // Frees the cells and leaves the data alone.
  ~TList() {
    while (head_ != nullptr) Delete_Cell(head_);
  }

  TList_Cell<T>* Head() const { return head_; }
  TList_Cell<T>* Tail() const { return tail_; }
  bool Empty() const { return head_ == nullptr; }

  // Walks the list: callers that only ask whether it is empty use Empty().
  int Length() const {
    int count = 0;
    for (TList_Cell<T>* cell = head_; cell != nullptr; cell = cell->next_) ++count;
    return count;
  }

  void Append(T& data) { Append(data, nullptr); }

  // Inserts behind `after`; null or the tail means the end of the list.
  void Append(T& data, TList_Cell<T>* after) {
    TList_Cell<T>* cell = new TList_Cell<T>(&data);
    if (after == nullptr) after = tail_;
    cell->prior_ = after;
    cell->next_ = after != nullptr ? after->next_ : nullptr;
    Link(cell);
  }

  void Prepend(T& data) { Prepend(data, nullptr); }

  // Inserts before `before`; null or the head means the front.
  void Prepend(T& data, TList_Cell<T>* before) {
    TList_Cell<T>* cell = new TList_Cell<T>(&data);
    if (before == nullptr) before = head_;
    cell->next_ = before;
    cell->prior_ = before != nullptr ? before->prior_ : nullptr;
    Link(cell);
  }

  // Unlinks and frees the cell, not its data.
  void Delete_Cell(TList_Cell<T>* cell) {
    if (cell == nullptr || head_ == nullptr) return;
    if (cell->prior_ != nullptr) cell->prior_->next_ = cell->next_; else head_ = cell->next_;
    if (cell->next_ != nullptr) cell->next_->prior_ = cell->prior_; else tail_ = cell->prior_;
    delete cell;
  }

  // Deletes the data, then the cell.
  void Delete_Data_Cell(TList_Cell<T>* cell) {
    if (cell == nullptr || head_ == nullptr) return;
    delete cell->data_;
    Delete_Cell(cell);
  }

  // Deletes every element and every cell, from the head.
  void Delete_Data() {
    TList_Cell<T>* cell = head_;
    while (cell != nullptr) {
      TList_Cell<T>* next = cell->next_;
      Delete_Data_Cell(cell);
      cell = next;
    }
  }

  // Each element by its output operator, each followed by a blank.
  std::ostream& Print(std::ostream& out) const {
    for (TList_Cell<T>* cell = head_; cell != nullptr; cell = cell->next_) out << *cell->data_ << ' ';
    return out;
  }

 private:
  // Puts a cell whose prior and next are set into the chain.
  void Link(TList_Cell<T>* cell) {
    if (cell->prior_ != nullptr) cell->prior_->next_ = cell; else head_ = cell;
    if (cell->next_ != nullptr) cell->next_->prior_ = cell; else tail_ = cell;
  }

  TList_Cell<T>* head_ = nullptr;
  TList_Cell<T>* tail_ = nullptr;
};

template <class T>
std::ostream& operator<<(std::ostream& out, const TList<T>& list) {
  return list.Print(out);
}

#endif
