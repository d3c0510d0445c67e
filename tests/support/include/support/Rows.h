#pragma once

#include <gtest/gtest.h>

#include <string>

namespace pendra {

/// Names the rows of a table-driven test by their member `name`.
struct RowName {
  template <class Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    return row.param.name;
  }
};

}  // namespace pendra
