#pragma once

// Headers that are costly and that nearly every source needs. A source still includes what it uses.
#include <QtCore/QtCore>
#include <QtGui/QtGui>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/signals2/signal.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>
