#pragma once

#include <QStringList>

// The shared corpus's 4000 x 3000 photos ($KAVORI_CORPUS/big), by name; empty when the
// variable is not set.
QStringList CorpusPhotos();

// The shared corpus's tree of 200,000 small files ($KAVORI_CORPUS/tree); empty when the variable
// is not set or the tree is missing.
QString CorpusTree();
