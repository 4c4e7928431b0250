// The drawing sheets of a part, in order.
#pragma once

#include <NXOpen/Drawings_DrawingSheet.hxx>

#include <memory>
#include <vector>

namespace NXOpen::Drawings {

class NXOPEN_EXPORT DrawingSheetCollection {
 public:
    class iterator {
     public:
        iterator() = default;
        explicit iterator(const std::unique_ptr<DrawingSheet>* place) : place_(place) {}

        DrawingSheet* operator*() const { return place_->get(); }
        iterator& operator++() {
            ++place_;
            return *this;
        }
        iterator operator++(int) {
            iterator before = *this;
            ++place_;
            return before;
        }
        bool operator==(const iterator& other) const { return place_ == other.place_; }
        bool operator!=(const iterator& other) const { return place_ != other.place_; }

     private:
        const std::unique_ptr<DrawingSheet>* place_ = nullptr;
    };

    explicit DrawingSheetCollection(devkit::PartData& part) : part_(part) {}
    DrawingSheetCollection(const DrawingSheetCollection&) = delete;
    DrawingSheetCollection& operator=(const DrawingSheetCollection&) = delete;

    iterator begin();
    iterator end();

 private:
    const std::unique_ptr<DrawingSheet>* first();

    devkit::PartData& part_;
    std::vector<std::unique_ptr<DrawingSheet>> sheets_;
};

}  // namespace NXOpen::Drawings
