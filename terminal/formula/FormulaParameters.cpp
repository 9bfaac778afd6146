#include "terminal/formula/FormulaParameters.h"

#include "terminal/formula/FormulaWords.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

/// Value of a number that was kept, when it is one that the parameter may have.
double keptNumber(const FormulaParameter &parameter, const QJsonObject &kept) {
    const double value = kept.value(parameter.name).toDouble(parameter.value);
    return value >= parameter.min && value <= parameter.max ? value : parameter.value;
}

TC::CFormulaParameter shownParameter(const FormulaParameter &parameter) {
    TC::CFormulaParameter made;
    made.mName = parameter.name;
    made.mText = parameter.text;
    made.mIsText = parameter.isText;
    made.mDefault = parameter.value;
    made.mMin = parameter.min;
    made.mMax = parameter.max;
    made.mStrDefault = parameter.textValue;
    return made;
}

/// Why a value cannot be that of a parameter; empty when it can.
QString refusalOf(const FormulaParameter &parameter, const TC::CFormulaParameter &value) {
    if (parameter.isText != value.mIsText) {
        return FormulaWords::tr("参数 %1 的类型不符").arg(parameter.name);
    }
    const bool inRange = value.mValue >= parameter.min && value.mValue <= parameter.max;
    return parameter.isText || inRange ? QString()
                                       : FormulaWords::tr("参数 %1 的值超出范围").arg(parameter.name);
}

} // namespace

TC::CFormulaDetailPtr recordOf(const FormulaDescription &description, bool isVisible, const QJsonObject &kept) {
    const auto record = boost::make_shared<TC::CFormulaDetail>();
    record->mName = description.name;
    record->mFileName = description.name;
    record->mType = description.type;
    record->mVisible = isVisible;
    for (int i = 0; i < description.lines.size(); ++i) {
        if (description.lines[i].precision >= 0) {
            record->mPrecisions.insert(i, description.lines[i].precision);
        }
    }
    for (const FormulaParameter &parameter : description.parameters) {
        if (parameter.isText) {
            record->mStrParamNames.append(parameter.name);
            record->mStrParamValues.append(kept.value(parameter.name).toString(parameter.textValue));
        } else {
            record->mParamNames.append(parameter.name);
            record->mParamValues.append(keptNumber(parameter, kept));
        }
    }
    return record;
}

TC::CFormulaDetailPtr recordOf(const TC::CFormulaDetail &script, const QJsonObject &kept) {
    const auto record = boost::make_shared<TC::CFormulaDetail>(script);
    for (int i = 0; i < script.mParamNames.size(); ++i) {
        record->mParamValues[i] = kept.value(script.mParamNames[i]).toDouble(script.mParamValues[i]);
    }
    for (int i = 0; i < script.mStrParamNames.size(); ++i) {
        record->mStrParamValues[i] = kept.value(script.mStrParamNames[i]).toString(script.mStrParamValues[i]);
    }
    return record;
}

TC::CFormulaParameters parametersOf(const FormulaDescription &description, const TC::CFormulaDetail &record) {
    TC::CFormulaParameters all;
    for (const FormulaParameter &parameter : description.parameters) {
        TC::CFormulaParameter made = shownParameter(parameter);
        if (parameter.isText) {
            made.mStrValue = record.mStrParamValues[record.mStrParamNames.indexOf(parameter.name)];
        } else {
            made.mValue = record.mParamValues[record.mParamNames.indexOf(parameter.name)];
        }
        all.append(made);
    }
    return all;
}

TC::CFormulaParameters parametersOf(const TC::CFormulaDetail &defaults, const TC::CFormulaDetail &record) {
    TC::CFormulaParameters all;
    for (int i = 0; i < record.mParamNames.size(); ++i) {
        TC::CFormulaParameter made;
        made.mName = record.mParamNames[i];
        made.mValue = record.mParamValues[i];
        made.mDefault = defaults.mParamValues[i];
        all.append(made);
    }
    for (int i = 0; i < record.mStrParamNames.size(); ++i) {
        TC::CFormulaParameter made;
        made.mName = record.mStrParamNames[i];
        made.mIsText = true;
        made.mStrValue = record.mStrParamValues[i];
        made.mStrDefault = defaults.mStrParamValues[i];
        all.append(made);
    }
    return all;
}

QString setValues(QJsonObject &kept, const FormulaDescription &description,
                  const TC::CFormulaParameters &values) {
    for (const TC::CFormulaParameter &value : values) {
        const auto parameter =
            std::find_if(description.parameters.begin(), description.parameters.end(),
                         [&value](const FormulaParameter &known) { return known.name == value.mName; });
        if (parameter == description.parameters.end()) {
            continue;
        }
        const QString refusal = refusalOf(*parameter, value);
        if (!refusal.isEmpty()) {
            return refusal;
        }
        kept.insert(parameter->name, value.mIsText ? QJsonValue(value.mStrValue) : QJsonValue(value.mValue));
    }
    return {};
}

QString setValues(QJsonObject &kept, const TC::CFormulaDetail &defaults, const TC::CFormulaParameters &values) {
    for (const TC::CFormulaParameter &value : values) {
        const QVector<QString> &names = value.mIsText ? defaults.mStrParamNames : defaults.mParamNames;
        if (!names.contains(value.mName)) {
            return FormulaWords::tr("参数 %1 的类型不符").arg(value.mName);
        }
        if (!value.mIsText && !std::isfinite(value.mValue)) {
            return FormulaWords::tr("参数 %1 的值超出范围").arg(value.mName);
        }
        kept.insert(value.mName, value.mIsText ? QJsonValue(value.mStrValue) : QJsonValue(value.mValue));
    }
    return {};
}

QMap<QString, QString> argumentsOf(const TC::CFormulaDetail &record) {
    QMap<QString, QString> arguments;
    for (int i = 0; i < record.mParamNames.size(); ++i) {
        arguments.insert(record.mParamNames[i], QString::number(record.mParamValues[i], 'g', 17));
    }
    for (int i = 0; i < record.mStrParamNames.size(); ++i) {
        arguments.insert(record.mStrParamNames[i], record.mStrParamValues[i]);
    }
    return arguments;
}

} // namespace terminal
