// SPDX-License-Identifier: Apache-2.0
// What programs that are written against the standard's headers do with them: each function is one use. That
// all of it compiles, in the oldest dialect of such programs and in ours, is the test; nothing here is ever
// run.
#include <Base/GCError.h>
#include <Base/GCException.h>
#include <GenApi/EnumClasses.h>
#include <GenApi/PortWriteList.h>
#include <GenApi/ValueArrayAdapter.h>

#include <GenICam.h>
#include <GenICamVersion.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>

using namespace GenApi;
using namespace GenICam;

// What every use has at hand.
#define USE(number)                                                                                          \
    void Use##number(CNodeMapRef& m, INodeMap* nm, INode* n, IInteger* i, IFloat* f, IBoolean* b,            \
                     IEnumeration* e, ICommand* c, IString* s, IRegister* r, IValue* v, IPort* p);           \
    void Use##number(CNodeMapRef& m, INodeMap* nm, INode* n, IInteger* i, IFloat* f, IBoolean* b,            \
                     IEnumeration* e, ICommand* c, IString* s, IRegister* r, IValue* v, IPort* p)

// clang-format off

// CNodeMapRef::_Ptr as member
USE(1)
{
    INodeMap* q = m._Ptr; (void)q;
}

// if (m._Ptr)
USE(2)
{
    if (m._Ptr) m._Ptr->Poll(1);
}

// m._Connect(port)
USE(3)
{
    m._Connect(p); m._Connect(p, "Device");
}

// m._LoadXMLFromString std::string c_str
USE(4)
{
    std::string t; m._LoadXMLFromString(t.c_str());
}

// m._SetSuppressCallbackMode
USE(5)
{
    m._SetSuppressCallbackMode(csmOff);
}

// nm->SetSuppressCallbackMode
USE(6)
{
    nm->SetSuppressCallbackMode(csmActive);
}

// nm->GetDeviceName non-const
USE(7)
{
    gcstring x = nm->GetDeviceName();
}

// Concatenator Add int64/double/bool/char*
USE(8)
{
    CNodeWriteConcatenator* q = nm->NewNodeWriteConcatenator(); q->Add("a", (int64_t)1); q->Add("a", 1.5); q->Add("a", true); q->Add("a", "x");
}

// CNodeWriteConcatenatorRef
USE(9)
{
    CNodeWriteConcatenatorRef q(m._NewNodeWriteConcatenator()); q._Add("A", (int64_t)5); m._ConcatenatedWrite(q);
}

// CIntegerRef etc. reference templates
USE(10)
{
    CIntegerRef x; x.SetReference(n);
}

// CEnumerationTRef
USE(11)
{
    enum EE { A, B }; CEnumerationTRef<EE> x; (void)x;
}

// CBooleanRef CCommandRef CStringRef CRegisterRef CCategoryRef CPortRef
USE(12)
{
    CBooleanRef a; CCommandRef cc; CStringRef ss; CRegisterRef rr; CCategoryRef ca; CPortRef pp;
}

// IReference
USE(13)
{
    IReference* q = nullptr; q->SetReference(n);
}

// IEnumerationT
USE(14)
{
    enum EE { A, B }; IEnumerationT<EE>* q = nullptr; q->SetValue(A); EE z = q->GetValue(); (void)z;
}

// CIntegerPtr from node
USE(15)
{
    CIntegerPtr x = n; x->SetValue(1); int64_t z = x->GetValue(); (void)z;
}

// CIntegerPtr(nm->GetNode) with IsAvailable
USE(16)
{
    CIntegerPtr x(nm->GetNode("W")); if (IsAvailable(x) && IsReadable(x) && IsImplemented(x)) { }
}

// !ptr and if(ptr)
USE(17)
{
    CNodePtr x = n; if (!x) return; if (x) return;
}

// (*ptr)()
USE(18)
{
    CIntegerPtr x = n; int64_t z = (*x)(); z = **x; (void)z;
}

// *ptr = 5
USE(19)
{
    CIntegerPtr x = n; *x = 5; CFloatPtr y = n; *y = 5.0; CBooleanPtr bb = n; *bb = true;
}

// enum = string
USE(20)
{
    CEnumerationPtr x = n; *x = "Mono8"; x->FromString("Mono8"); gcstring z = **x; z = x->ToString();
}

// enum GetEntries loop it++
USE(21)
{
    CEnumerationPtr x = n; NodeList_t l; x->GetEntries(l); for (NodeList_t::iterator it = l.begin(); it != l.end(); it++) { CEnumEntryPtr y = *it; }
}

// enum GetSymbolics
USE(22)
{
    StringList_t l; e->GetSymbolics(l); for (size_t k = 0; k < l.size(); ++k) l[k].c_str();
}

// gcstring_vector const_iterator
USE(23)
{
    const gcstring_vector l; for (gcstring_vector::const_iterator it = l.begin(); it != l.end(); ++it) (*it).c_str();
}

// gcstring_vector::contains
USE(24)
{
    gcstring_vector l; bool z = l.contains("x"); (void)z;
}

// FeatureList_t iterate
USE(25)
{
    CCategoryPtr x = n; FeatureList_t l; x->GetFeatures(l); for (FeatureList_t::iterator it = l.begin(); it != l.end(); ++it) { if (IsAvailable(*it)) (*it)->GetNode()->GetName(); }
}

// FeatureList_t const_iterator
USE(26)
{
    FeatureList_t l; for (FeatureList_t::const_iterator it = l.begin(); it != l.end(); ++it) { IValue* q = *it; (void)q; }
}

// std::copy over NodeList_t
USE(27)
{
    NodeList_t l; std::vector<INode*> o(l.begin(), l.end());
}

// gcstring to std::string implicit
USE(28)
{
    std::string x = std::string(n->GetName());
}

// gcstring from std::string c_str
USE(29)
{
    std::string x; gcstring y(x.c_str()); gcstring z = x.c_str();
}

// gcstring find_last_of
USE(30)
{
    gcstring a; a.find_last_of('.'); a.find_last_of("ab"); a.find_last_not_of(' ');
}

// gcstring::_npos()
USE(31)
{
    gcstring a; if (a.find("x") == gcstring::_npos()) {}
}

// gcstring virtual override
USE(32)
{
    struct X : gcstring { size_t length() const { return 0; } }; X x; (void)x;
}

// cout << gcstring
USE(33)
{
    std::cout << n->GetName() << std::endl;
}

// std::map<gcstring,int>
USE(34)
{
    std::map<gcstring, int> q; q["a"] = 1;
}

// printf %s with cast
USE(35)
{
    printf("%s", (const char*)n->GetName());
}

// GENICAM_NAMESPACE::gcstring
USE(36)
{
    GENICAM_NAMESPACE::gcstring q; GENAPI_NAMESPACE::INode* w = n; (void)w;
}

// catch GenericException what GetDescription
USE(37)
{
    try { } catch (const GenericException& x) { x.what(); x.GetDescription(); x.GetSourceFileName(); x.GetSourceLine(); }
}

// throw RUNTIME_EXCEPTION std::string
USE(38)
{
    std::string q; throw RUNTIME_EXCEPTION(q);
}

// throw RUNTIME_EXCEPTION stringstream
USE(39)
{
    std::stringstream q; throw RUNTIME_EXCEPTION(q);
}

// throw RUNTIME_EXCEPTION()
USE(40)
{
    throw RUNTIME_EXCEPTION();
}

// construct RuntimeException directly
USE(41)
{
    throw RuntimeException("x", __FILE__, __LINE__);
}

// CHECK_RANGE_I64
USE(42)
{
    CHECK_RANGE_I64(1, 0, 5, 1); CHECK_RANGE_FLT(1.0, 0.0, 5.0);
}

// CHECK_DYNAMIC_CAST_POINTER
USE(43)
{
    CHECK_DYNAMIC_CAST_POINTER(n);
}

// Register(object, member)
USE(44)
{
    struct X { void cb(INode*) {} } x; intptr_t h = Register(n, x, &X::cb); n->DeregisterCallback(h);
}

// Register(object, member, outside)
USE(45)
{
    struct X { void cb(INode*) {} } x; Register(n, x, &X::cb, cbPostOutsideLock);
}

// make_NodeCallback + RegisterCallback
USE(46)
{
    struct X { static void cb(INode*) {} }; n->RegisterCallback(make_NodeCallback(n, &X::cb, cbPostInsideLock));
}

// Function_NodeCallback with std::function null test
USE(47)
{
    std::function<void(INode*)> q; CNodeCallback* k = make_NodeCallback(n, q, cbPostInsideLock); (*k)(cbPostInsideLock);
}

// n->GetVisibility etc
USE(48)
{
    n->GetVisibility(); n->GetCachingMode(); n->GetPollingTime(); n->GetToolTip(); n->GetDescription(); n->GetDisplayName(); n->IsFeature(); n->IsStreamable(); n->GetPrincipalInterfaceType(); n->GetEventID(); n->GetDocuURL(); n->IsDeprecated(); n->GetAlias(); n->GetCastAlias();
}

// n->GetChildren ctValueChangingChildren
USE(49)
{
    NodeList_t l; n->GetChildren(l, ctValueChangingChildren);
}

// IsCacheable(mode)
USE(50)
{
    bool z = IsCacheable(n->GetCachingMode()); (void)z;
}

// Combine(caching)
USE(51)
{
    ECachingMode z = Combine(WriteThrough, NoCache); (void)z;
}

// s->GetMaxLength(bool)
USE(52)
{
    s->GetMaxLength(true);
}

// s->SetValue(std::string.c_str)
USE(53)
{
    std::string q; s->SetValue(q.c_str()); *s = "abc";
}

// i->GetListOfValidValues int64_autovector_t
USE(54)
{
    int64_autovector_t l = i->GetListOfValidValues(); for (size_t k = 0; k < l.size(); ++k) { int64_t z = l[k]; (void)z; }
}

// f->GetListOfValidValues
USE(55)
{
    double_autovector_t l = f->GetListOfValidValues(false); double z = l[0]; (void)z;
}

// CFloatPtr alias
USE(56)
{
    CFloatPtr x = n; x.GetIntAlias(); x.GetEnumAlias();
}

// CSelectorPtr
USE(57)
{
    CSelectorPtr x = n; FeatureList_t l; x->GetSelectedFeatures(l); x->GetSelectingFeatures(l); x->IsSelector();
}

// dynamic_cast<INode*>(v)
USE(58)
{
    INode* q = dynamic_cast<INode*>(v); q = v->GetNode(); (void)q;
}

// CSelectorSet walk
USE(59)
{
    CSelectorSet x(v); if (!x.IsEmpty()) { x.SetFirst(); do { x.ToString(); } while (x.SetNext()); x.Restore(); }
}

// ISelectorDigit custom class
USE(60)
{
    struct X : ISelectorDigit { bool SetFirst() override { return 0; } bool SetNext(bool) override { return 0; } void Restore() override {} gcstring ToString() override { return ""; } void GetState(CSelectorState&) override {} void GetSelectorList(FeatureList_t&, bool) override {} }; X x; (void)x;
}

// CFeatureBag store/load
USE(61)
{
    CFeatureBag x; x.StoreToBag(nm); gcstring_vector er; x.LoadFromBag(nm, true, &er);
}

// CFeatureBag stream
USE(62)
{
    CFeatureBag x; std::ofstream o("x"); o << x; std::ifstream in("x"); in >> x;
}

// CFeatureBag SetInfo(const)
USE(63)
{
    CFeatureBag x; x.SetInfo("info"); const gcstring k("a"); x.SetInfo(k);
}

// CFeatureBag PersistFeature 2 args
USE(64)
{
    CFeatureBag x; x.PersistFeature(*v, (CSelectorSet*)0);
}

// CFeatureBagger
USE(65)
{
    CFeatureBagger x; x.Bag(nm); x.UnBag(nm);
}

// GENAPI_PERSISTENCE_MAGIC
USE(66)
{
    const char* q = GENAPI_PERSISTENCE_MAGIC; (void)q;
}

// EatComments TrimSpace
USE(67)
{
    std::istringstream q; EatComments(q);
}

// CNodeMapFactory file/zip
USE(68)
{
    CNodeMapFactory x(ContentType_ZippedXml, "a", (size_t)1); INodeMap* q = x.CreateNodeMap(); q = x.CreateNodeMap("Dev"); (void)q;
}

// CNodeMapFactory user lock
USE(69)
{
    CNodeMapFactory x; GenApi::CLock l; INodeMap* q = x.CreateNodeMap(l, "Dev"); (void)q;
}

// CNodeMapFactory LoadAndInject IsLoaded Preprocess
USE(70)
{
    CNodeMapFactory x; x.LoadAndInject(); x.IsLoaded(); x.Preprocess();
}

// CNodeMapFactory::CreateEmptyNodeMap
USE(71)
{
    INodeMap* q = CNodeMapFactory::CreateEmptyNodeMap(); (void)q;
}

// CNodeMapFactory GetNodeStatistics
USE(72)
{
    CNodeMapFactory x; CNodeMapFactory::NodeStatistics_t st; x.GetNodeStatistics(st);
}

// CNodeMapFactory ToString ApplyStyleSheet
USE(73)
{
    CNodeMapFactory x; x.ToString(); x.ApplyStyleSheet("a");
}

// CastToIDestroy
USE(74)
{
    IDestroy* q = CastToIDestroy(nm); q->Destroy();
}

// dynamic_cast<IDestroy*>(nm)
USE(75)
{
    IDestroy* q = dynamic_cast<IDestroy*>(nm); q->Destroy();
}

// dynamic_cast<IDeviceInfo*>(m._Ptr)
USE(76)
{
    IDeviceInfo* q = dynamic_cast<IDeviceInfo*>(m._Ptr); (void)q;
}

// IUserData
USE(77)
{
    CNodeUserDataPtr x = n; x->SetUserData((void*)1); UserData_t u = x->GetUserData(); (void)u;
}

// own IPort
USE(78)
{
    struct X : IPort { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} }; X x; nm->Connect(&x, "Device");
}

// delete IPort*
USE(79)
{
    delete p;
}

// std::shared_ptr<IBase> of IPort
USE(80)
{
    std::shared_ptr<IPort> q(p);
}

// own CPortImpl
USE(81)
{
    struct X : CPortImpl { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} }; X x; nm->Connect(&x, "Device"); x.InvalidateNode();
}

// IPortStacked
USE(82)
{
    struct X : IPortStacked { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} void Write(PORT_REGISTER_STACK_ENTRY*, size_t) override {} }; X x; nm->Connect(&x, "Device");
}

// CPortWriteList + recorder
USE(83)
{
    CPortWriteList l; CPortRecorderPtr q = nm->GetNode("Device"); q->StartRecording(&l); q->StopRecording(); CPortReplayPtr w = nm->GetNode("Device"); w->Replay(&l);
}

// CTestPortStruct
USE(84)
{
    struct D { uint32_t a; }; CTestPortStruct<D> x; nm->Connect(&x, "Device"); x.a = 1; x.MemSet(0); x.InvalidateNode();
}

// CTestPortStruct base address
USE(85)
{
    struct D { uint32_t a; }; CTestPortStruct<D> x(0x100); int64_t k = x.GetNumReads(); (void)k;
}

// CChunkAdapterGeneric list (4 args)
USE(86)
{
    CChunkAdapterGeneric x(nm); SingleChunkData_t d[1]; uint8_t bu[8]; x.AttachBuffer(bu, d, 1);
}

// CChunkAdapterGeneric str list
USE(87)
{
    CChunkAdapterGeneric x(nm); SingleChunkDataStr_t d[1]; uint8_t bu[8]; AttachStatistics_t st; x.AttachBuffer(bu, d, 1, &st);
}

// CChunkAdapterGenDC
USE(88)
{
    CChunkAdapterGenDC x(nm); (void)x;
}

// GVCP_CHUNK_TRAILER U3V_CHUNK_TRAILER
USE(89)
{
    GVCP_CHUNK_TRAILER a; U3V_CHUNK_TRAILER bb; (void)a; (void)bb;
}

// CEventAdapterGEV structs
USE(90)
{
    CEventAdapterGEV x(nm); GVCP_EVENT_REQUEST_EXTENDED_ID q; x.DeliverEventMessage(&q); GVCP_EVENTDATA_REQUEST_EXTENDED_ID w; x.DeliverEventMessage(&w);
}

// GVCP tags
USE(91)
{
    int z = TAG_EVENT_CMD + TAG_EVENTDATA_CMD + COMMAND_MAGIC; (void)z;
}

// U3V event structs
USE(92)
{
    U3V_EVENT_MESSAGE q; q.CommandHeader.Prefix = U3V_EVENT_PREFIX; q.EventData.Reserved = 0; uint16_t z = GENCP_EVENT_CMD_ID; (void)z;
}

// CEventAdapter1394 CL
USE(93)
{
    CEventAdapter1394 x(nm); CEventAdapterCL y(nm);
}

// AutoLock(nm->GetLock())
USE(94)
{
    AutoLock l(nm->GetLock());
}

// IEnumEntry members
USE(95)
{
    CEnumEntryPtr x = n; x->GetSymbolic(); x->GetNumericValue(); x->IsSelfClearing(); x->GetValue(); x->GetNode(); x->GetAccessMode();
}

// IBoolean
USE(96)
{
    bool z = b->GetValue(); z = (*b)(); *b = false; (void)z;
}

// GetInterfaceName
USE(97)
{
    gcstring q = GetInterfaceName(n);
}

// EInterfaceType switch
USE(98)
{
    switch (n->GetPrincipalInterfaceType()) { case intfIInteger: case intfIFloat: case intfIEnumeration: case intfICommand: case intfIBoolean: case intfIString: case intfIRegister: case intfICategory: case intfIEnumEntry: case intfIPort: case intfIValue: case intfIBase: break; }
}

// EGenApiSchemaVersion _Undefined
USE(99)
{
    EGenApiSchemaVersion q = GenApi::_Undefined; (void)q;
}

// IDevFileStream
USE(100)
{
    IDevFileStream x; x.open(nm, "UserFile", std::ios::in | std::ios::binary); x.close();
}

// ODevFileStream
USE(101)
{
    ODevFileStream x(nm, "UserFile"); x << "a"; x.fail();
}

// GenICam_streamsize
USE(102)
{
    GenICam_streamsize q = 0; (void)q;
}

// CRegisterSetHelper
USE(103)
{
    (void)sizeof(CRegisterSetHelper);
}

// GC_INT64_MAX GC_INT64_MIN FMT_I64
USE(104)
{
    int64_t z = GC_INT64_MAX; z = GC_INT64_MIN; printf("%" FMT_I64 "d", z);
}

// INTEGRAL_CAST
USE(105)
{
    int q = INTEGRAL_CAST<int>((int64_t)5); unsigned w = INTEGRAL_CAST2<unsigned, int64_t>(5); (void)q; (void)w;
}

// GetValueOfEnvironmentVariable
USE(106)
{
    gcstring z; GetValueOfEnvironmentVariable("x", z);
}

// GC_COUNTOF PLATFORM_NAME
USE(107)
{
    int a[3]; size_t z = GC_COUNTOF(a); const char* q = PLATFORM_NAME; (void)z; (void)q;
}

// GENICAM_VERSION macros
USE(108)
{
    int z = GENICAM_VERSION_MAJOR * 100 + GENICAM_VERSION_MINOR; (void)z;
}

// nm->GetNodes const_iterator
USE(109)
{
    NodeList_t l; nm->GetNodes(l); for (NodeList_t::const_iterator it = l.begin(); it != l.end(); ++it) (*it)->GetName();
}

// IsWritable(nm->GetNode(..))
USE(110)
{
    if (IsWritable(nm->GetNode("W"))) {} if (IsReadable(*i)) {}
}

// CValuePtr ToString
USE(111)
{
    CValuePtr x = n; x->ToString(true, true); x->FromString("1", false); x->IsValueCacheValid();
}

// IInteger* operators
USE(112)
{
    int64_t z = (*i)(); z = **i; *i = 3; (void)z;
}

// ptr assign from other ptr
USE(113)
{
    CIntegerPtr x = n; CNodePtr y = n; CValuePtr z(y); x = y; 
}

// CPointer null deref throws; operator T*
USE(114)
{
    CNodePtr y; INode* z = y; (void)z;
}

// AccessMode literal GenApi::RW
USE(115)
{
    EAccessMode z = GenApi::RW; z = GenApi::NI; (void)z;
}

// versioned name spaces
USE(116)
{
    GenICam_3_4::gcstring a; GenApi_3_4::INode* q = n; (void)q;
}

// interfaces by macro
USE(117)
{
    struct Y; GENICAM_INTERFACE Z { virtual void F() = 0; }; (void)sizeof(Z);
}

// GenICamVersion texts
USE(118)
{
    const char* q = GENICAM_VERSION_MAJOR_STR "." GENICAM_VERSION_MINOR_STR GENICAM_CACHE_VERSION; (void)q;
}

// DLL_NAME
USE(119)
{
    const char* q = DLL_NAME("GenApi"); (void)q;
}

// Version_t at global scope
USE(120)
{
    ::Version_t a = {1, 2, 3}; (void)a; float64_t d = 0; (void)d;
}

// GC_ERROR
USE(121)
{
    GC_ERROR q = GC_ERR_TIMEOUT; bool z = GC_IS_ERROR(q); (void)z;
}

// gcarray
USE(122)
{
    gcarray<uint8_t> a(4); a[0] = 1; uint8_t* q = *a; (void)q;
}

// DECLARE_EXCEPTION
USE(123)
{
    DECLARE_EXCEPTION(MyException); throw MyException("x", __FILE__, __LINE__);
}

// ExceptionReporter by hand
USE(124)
{
    throw ExceptionReporter<RuntimeException>(__FILE__, __LINE__).Report("a %d", 1);
}

// exception with node
USE(125)
{
    throw AccessException("x", __FILE__, __LINE__, "SetValue", "Gain", "AccessException");
}

// operator<< by its global name
USE(126)
{
    ::operator<<(std::cout, n->GetName());
}

// gcstring in a stream
USE(127)
{
    std::stringstream q; gcstring a; q << a; q >> a; getline(q, a);
}

// gcstring with override
USE(128)
{
    struct X : gcstring { size_t length() const override { return 0; } }; X x; (void)x;
}

// gcstring_vector iterators
USE(129)
{
    gcstring_vector l(2); gcstring_vector::iterator it = l.begin() + 1; l.insert(it, "a"); l.erase(l.begin()); l.insert((size_t)0, "b"); std::vector<gcstring> o(l.begin(), l.end());
}

// sorting a gcstring_vector
USE(130)
{
    gcstring_vector l; std::sort(l.begin(), l.end());
}

// LockableObject
USE(131)
{
    struct D { int a; }; LockableObject<D> x; LockableObject<D>::Lock k(x); x.a = 1;
}

// two kinds of locks
USE(132)
{
    GenApi::CLock l; GenICam::CLock k; GenApi::AutoLock a(l); CLockEx e2;
}

// NodeList_t by index
USE(133)
{
    NodeList_t l; l.push_back(n); l.insert((size_t)0, n); l.erase((size_t)0); l.resize(2); INode* q = l.at(0); (void)q;
}

// autovector shares
USE(134)
{
    int64_autovector_t l(3), k(l); k[0] = 1;
}

// CReferenceT of a program
USE(135)
{
    struct X : CIntegerRefT<IInteger> {}; X x; IReference* q = &x; q->SetReference(n); x.GetFloatAlias(); CValueRef w; CFloatRef y; CEnumEntryRef z; CSelectorRef u; CPortRecorderRef k; CPortStackedRef j; CBaseRef h;
}

// reference in generated code
USE(136)
{
    struct P { CIntegerRef Width; enum EE { A }; CEnumerationTRef<EE> Mode; virtual void _Initialize(INodeMap* q) { Width.SetReference(q->GetNode("Width")); Mode.SetReference(q->GetNode("Mode")); Mode.SetNumEnums(1); Mode.SetEnumReference(A, "A"); } virtual ~P() {} }; CNodeMapRefT<P> x("Camera"); x._LoadXMLFromFile("a"); x.Width.SetValue(1); x.Mode.SetValue(P::A); x.Mode = "A";
}

// empty node map reference
USE(137)
{
    CNodeMapRef x; if (!x._Ptr) x = nm; CNodeMapRef y(x); y = x;
}

// IDestroy of a factory's map
USE(138)
{
    CastToIDestroy(CNodeMapFactory(gcstring("<x/>")).CreateNodeMap())->Destroy();
}

// factory from text with injection
USE(139)
{
    CNodeMapFactory x(gcstring("<x/>")), y; x.AddInjectionData(y); x.Preprocess(); x.IsPreprocessed(); x.ExtractSubtree("A", true); x.ToXml(); CNodeMapFactory::ClearCache();
}

// ConcatenatedWrite by pointer
USE(140)
{
    CNodeWriteConcatenatorRef q(nm->NewNodeWriteConcatenator()); gcstring_vector er; nm->ConcatenatedWrite(q, false, &er); q._Add("A", 1.5); q._Add("A", true); q._Add("A", "x"); q._Clear(); CNodeWriteConcatenator* w = q.Release(); w->Destroy();
}

// INodeMapDyn
USE(141)
{
    INodeMapDyn* q = dynamic_cast<INodeMapDyn*>(nm); if (q) q->LoadXMLFromString("x");
}

// user data of the map
USE(142)
{
    CNodeMapUserDataPtr x = nm; x->SetUserData(NULL);
}

// own CPortStackedImpl
USE(143)
{
    struct X : CPortStackedImpl { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} void Write(PORT_REGISTER_STACK_ENTRY*, size_t) override {} }; X x; nm->Connect(&x); x.InvalidateNode();
}

// own IPortConstruct
USE(144)
{
    struct X : IPortConstruct { EAccessMode GetAccessMode() const override { return RW; } void Read(void*, int64_t, int64_t) override {} void Write(const void*, int64_t, int64_t) override {} void SetPortImpl(IPort*) override {} EYesNo GetSwapEndianess() override { return No; } }; X x; (void)x;
}

// own IPersistScript
USE(145)
{
    struct X : IPersistScript { void SetInfo(const gcstring&) override {} void PersistFeature(IValue&, CSelectorSet*) override {} }; X x; (void)x;
}

// own CNodeCallback
USE(146)
{
    struct X : CNodeCallback { X(INode* q) : CNodeCallback(q, cbPostInsideLock) {} void operator()(ECallbackType) const override {} void Destroy() override { delete this; } }; n->RegisterCallback(new X(n));
}

// own CEventAdapter
USE(147)
{
    struct X : CEventAdapter { void DeliverMessage(const uint8_t[], uint32_t) override { for (size_t k = 0; k < m_ppEventPorts->size(); ++k) (*m_ppEventPorts)[k]->CheckEventID(1); } }; X x; x.AttachNodeMap(nm);
}

// IChunkPort
USE(148)
{
    CChunkPortPtr x = n; gcstring q = x->GetChunkID(); EYesNo z = x->CacheChunkData(); (void)z; int64_t w = CHUNK_BASE_ADDRESS_REGISTER; (void)w;
}

// CChunkAdapterDcam
USE(149)
{
    CChunkAdapterDcam x(nm); GUID g; SET_GUID(g, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11); DCAM_CHUNK_TRAILER q; (void)q; uint8_t bu[24]; x.HasCRC(bu, 24);
}

// CL messages
USE(150)
{
    CEventAdapterCL x(nm); CL_EVENT_MESSAGE q; q.CommandHeader.Preamble = CL_EVENT_PREAMBLE; q.EventData.EventId = 1; x.DeliverEventData(&q.EventData, 12);
}

// CFeatureBag filter and name
USE(151)
{
    CFeatureBag x; gcstring_vector l; x.StoreToBag(nm, -1, &l); x.SetBagName("a"); gcstring q = x.GetBagName(); bool z = x == x; (void)z; std::cout << x;
}

// CFeatureBagger stream
USE(152)
{
    CFeatureBagger x; std::stringstream q; q << x; q >> x; for (CFeatureBagger::const_iterator it = x.begin(); it != x.end(); ++it) it->GetBagName(); x.at(0); x.SetInfo("a"); const char* w = GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER; (void)w;
}

// CSelectorState
USE(153)
{
    CSelectorSet x(v); CSelectorState q; x.GetState(q); if (q.SetFirst()) q.GetNodeName(); q.AddSelector(*v); q.RestoreState(nm);
}

// TrimSpace
USE(154)
{
    gcstring q; TrimSpace(q, std::cin);
}

// EnumClasses
USE(155)
{
    EAccessMode z; EAccessModeClass::FromString("RW", &z); gcstring q = EVisibilityClass::ToString(Guru); EYesNo y = Yes; EYesNoClass::ToString(q, &y); ESignClass::ToString(Signed); EGenApiSchemaVersionClass::ToString(v1_1);
}

// CIntegerValueArray
USE(156)
{
    CIntegerValueArray x(i, i); if (x.IsValid()) x.GetAllValues(); std::vector<double> q; CFloatValueArray(f, i).GetAllValues(q); CBooleanValueArray::CheckAdvertisedCompatibility(b, i);
}

// Counter
USE(157)
{
    Counter x; ++x; x--; if (x.IsZero()) {} unsigned q = x; (void)q;
}

// FileProtocolAdapter
USE(158)
{
    FileProtocolAdapter x; IFileProtocolAdapter* q = &x; q->attach(nm); GenICam_streamsize z = q->getBufSize("a", std::ios::in); (void)z;
}

// IsReadable of pointers
USE(159)
{
    CIntegerPtr x = n; if (IsReadable(x) || IsWritable(x) || IsImplemented(x) || IsAvailable(x)) {}
}

// a pointer as a condition
USE(160)
{
    bool z = CNodePtr(n); (void)z;
}

// printing a schema version
USE(161)
{
    EGenApiSchemaVersion q = v1_0; (void)q; ERepresentation z = _UndefindedRepresentation; (void)z; ESign w = _UndefinedSign; (void)w;
}

// deprecated functions
USE(162)
{
    struct X { GENICAM_DEPRECATED(void F()); }; (void)sizeof(X);
}
