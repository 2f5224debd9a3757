// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import vorrel.data.Core 1.0

TestCase {
    id: testCase
    name: "Context"

    // The values when the database opened, which is the moment at which they have to be there.
    component Watched: Context {
        property string urlAtOpening
        property int monitorAtOpening: -1
        property int openings: 0
        onDatabaseChanged: {
            ++openings
            urlAtOpening = String(serviceUrl)
            monitorAtOpening = changeFeedMonitorType
        }
    }

    Component {
        id: databaseFirst
        Watched {
            database: "shop"
            serviceUrl: "http://localhost:5984"
            changeFeedMonitorType: Context.NullMonitor
        }
    }

    Component {
        id: databaseLast
        Watched {
            changeFeedMonitorType: Context.NullMonitor
            serviceUrl: "http://localhost:5984"
            database: "shop"
        }
    }

    Component {
        id: bound
        Watched {
            property string name: "shop"
            database: name
            serviceUrl: "http://local" + "host:5984"
            changeFeedMonitorType: name ? Context.NullMonitor : Context.PollingMonitor
        }
    }

    Component {
        id: plain
        Context { }
    }

    SignalSpy {
        id: spy
    }

    function test_propertiesTakeEffectInAnyOrder_data() {
        return [
            { tag: "database first", component: databaseFirst },
            { tag: "database last", component: databaseLast },
            { tag: "bindings", component: bound }
        ]
    }

    function test_propertiesTakeEffectInAnyOrder(data) {
        const context = createTemporaryObject(data.component, testCase)
        compare(context.database, "shop")
        compare(context.openings, 1)
        compare(context.urlAtOpening, "http://localhost:5984")
        compare(context.monitorAtOpening, Context.NullMonitor)
    }

    function test_writingAPropertyAnnouncesTheChangeOnce_data() {
        return [
            { tag: "serviceUrl", value: "http://localhost:5984" },
            { tag: "database", value: "shop" },
            { tag: "changeFeedMonitorType", value: Context.PollingMonitor },
            { tag: "contentFetchPolicy", value: Context.BypassDocumentCachePolicy }
        ]
    }

    function test_writingAPropertyAnnouncesTheChangeOnce(data) {
        const context = createTemporaryObject(plain, testCase)
        spy.target = context
        spy.signalName = data.tag + "Changed"
        spy.clear()
        context[data.tag] = data.value
        context[data.tag] = data.value
        compare(String(context[data.tag]), String(data.value))
        compare(spy.count, 1)
    }

    function test_enumsHaveTheirValues() {
        compare([Context.NullMonitor, Context.ContinuousMonitor, Context.PollingMonitor,
                 Context.LongPollingMonitor], [0, 1, 2, 3])
        compare([Context.NoPolicy, Context.AutomaticAttachmentDownloadPolicy,
                 Context.DeletedDocumentLoadPolicy, Context.LocalDocumentLoadPolicy,
                 Context.BypassDocumentCachePolicy, Context.DefaultPolicy], [0, 1, 2, 4, 8, 4])
        compare([Document.UnknownAccess, Document.NoAccess, Document.ReadAccess,
                 Document.WriteAccess], [-1, 0, 1, 2])
    }

    function test_aDocumentWithoutAContextIsRefused_data() {
        return [
            { tag: "Document" }, { tag: "LinkedDocument" }, { tag: "Tag" }, { tag: "Location" },
            { tag: "Device" }, { tag: "KeyValueStore" }, { tag: "GenericData" }
        ]
    }

    function test_aDocumentWithoutAContextIsRefused(data) {
        let message = ""
        try {
            Qt.createQmlObject("import vorrel.data.Core 1.0; " + data.tag + " { }", testCase)
        } catch (error) {
            message = error.qmlErrors[0].message
        }
        compare(message, "Documents are made by a Context")
    }
}
