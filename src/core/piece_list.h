// The piece records in stacking order, and a note of which of them may have been written.
//
// Whoever composes the board need not look at thousands of records that nobody touched: every way to
// write a record goes through here and is noted. A note says "may have been": reading through a list that
// can be written counts too, so code that walks all pieces often does so through a const reference.
#pragma once
#include <cstddef>
#include <utility>
#include <vector>

#include "core/piece_rec.h"

namespace PuzzleModule {

class PieceList {
public:
    using Records = std::vector<PieceRec>;
    using value_type = PieceRec;

    PieceList& operator=(Records records) {
        records_ = std::move(records);
        NoteAll();
        return *this;
    }
    operator const Records&() const { return records_; }
    bool operator==(const Records& other) const { return records_ == other; }

    size_t size() const { return records_.size(); }
    bool empty() const { return records_.empty(); }
    const PieceRec* data() const { return records_.data(); }
    const PieceRec& operator[](size_t element) const { return records_[element]; }
    const PieceRec& at(size_t element) const { return records_.at(element); }
    const PieceRec& back() const { return records_.back(); }
    Records::const_iterator begin() const { return records_.begin(); }
    Records::const_iterator end() const { return records_.end(); }

    // For writing, until the next composition.
    PieceRec& operator[](size_t element) {
        if (!all_) Note(element);
        return records_[element];
    }
    Records::iterator begin() { return NoteAll(), records_.begin(); }
    Records::iterator end() { return NoteAll(), records_.end(); }
    void resize(size_t count) { NoteAll(), records_.resize(count); }
    void push_back(const PieceRec& piece) { NoteAll(), records_.push_back(piece); }
    void pop_back() { NoteAll(), records_.pop_back(); }
    void clear() { NoteAll(), records_.clear(); }

    // True if any record may have been written since ForgetWritten, or there are more or fewer. Else Written()
    // lists the elements that may have been; one may occur twice.
    bool AllWritten() const { return all_; }
    const std::vector<int>& Written() const { return written_; }
    void ForgetWritten() {
        written_.clear();
        all_ = false;
    }

private:
    void Note(size_t element) {
        if (written_.size() < records_.size())
            written_.push_back(int(element));
        else
            NoteAll();
    }
    void NoteAll() { all_ = true; }

    Records records_;
    std::vector<int> written_;
    bool all_ = true;
};

}  // namespace PuzzleModule
