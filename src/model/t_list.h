// TList is the one container of the system: a doubly linked list of cells
// that point at objects made elsewhere.  The list never owns its data; the
// one list that does is emptied with Delete_Data.  Scalars are stored as
// pointers to heap values too.  A long list may carry an index that it
// keeps current as cells come and go.
#ifndef FW_MODEL_T_LIST_H
#define FW_MODEL_T_LIST_H

#include <memory>
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

// A lookup structure beside a list.  The list tells it of every cell it
// links or unlinks; an index that can't follow a change answers false and
// the list drops it, for whoever needs it next to build anew.
template <class T>
class TList_Index {
 public:
  enum Where { kFront, kMiddle, kEnd };
  virtual ~TList_Index() = default;
  virtual bool Linked(TList_Cell<T>* cell, Where where) = 0;
  virtual bool Unlinked(TList_Cell<T>* cell) = 0;
};

template <class T>
class TList {
 public:
  TList() = default;
  TList(const TList&) = delete;
  TList& operator=(const TList&) = delete;
  // Frees the cells and leaves the data alone.
  ~TList() {
    index_.reset();
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
    if (index_ != nullptr && !index_->Unlinked(cell)) index_.reset();
    if (cell->prior_ != nullptr) cell->prior_->next_ = cell->next_; else head_ = cell->next_;
    if (cell->next_ != nullptr) cell->next_->prior_ = cell->prior_; else tail_ = cell->prior_;
    delete cell;
  }

  // Frees the cell, then the data: an index still reads the data as the
  // cell leaves it.
  void Delete_Data_Cell(TList_Cell<T>* cell) {
    if (cell == nullptr || head_ == nullptr) return;
    T* data = cell->data_;
    Delete_Cell(cell);
    delete data;
  }

  // Deletes every element and every cell, from the head.
  void Delete_Data() {
    index_.reset();
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

  // The index beside the list, null when there is none; a list may be
  // given one while others only read it.
  TList_Index<T>* Index() const { return index_.get(); }
  void Index(std::unique_ptr<TList_Index<T>> index) const { index_ = std::move(index); }

 private:
  // Puts a cell whose prior and next are set into the chain.
  void Link(TList_Cell<T>* cell) {
    if (cell->prior_ != nullptr) cell->prior_->next_ = cell; else head_ = cell;
    if (cell->next_ != nullptr) cell->next_->prior_ = cell; else tail_ = cell;
    if (index_ == nullptr) return;
    typename TList_Index<T>::Where where = cell->next_ == nullptr    ? TList_Index<T>::kEnd
                                           : cell->prior_ == nullptr ? TList_Index<T>::kFront
                                                                     : TList_Index<T>::kMiddle;
    if (!index_->Linked(cell, where)) index_.reset();
  }

  TList_Cell<T>* head_ = nullptr;
  TList_Cell<T>* tail_ = nullptr;
  mutable std::unique_ptr<TList_Index<T>> index_;
};

template <class T>
std::ostream& operator<<(std::ostream& out, const TList<T>& list) {
  return list.Print(out);
}

#endif
