// Exceptions: throwing, catching by class, @finally, rethrowing.
#import "behaviour.h"

@interface Trouble : NSException
@end
@implementation Trouble
@end
@interface Fault : NSObject
@property int code;
@end
@implementation Fault
@end
@interface Kept : NSObject
@end
@implementation Kept
- (void)dealloc {
  note("gone");
}
@end

static void throwNamed(NSString *name) {
  @throw [NSException exceptionWithName:name reason:@"because" userInfo:nil];
}

static int finallyThatReturns(void) {
  @try {
    throwNamed(@"Ignored");
  } @finally {
    return 5;
  }
}

static void holdWhileThrowing(void) {
  Kept *kept = [Kept new];
  throwNamed(@"Past");
  [kept self];
}

BEHAVIOUR(aThrownExceptionIsCaught) {
  NSException *caught = nil;
  @try {
    throwNamed(@"Name");
  } @catch (NSException *exception) {
    caught = exception;
  }
  equalStrings(caught.name, "Name");
  equalStrings(caught.reason, "because");
}

BEHAVIOUR(nothingThrownLeavesTheHandlersOut) {
  @try {
    note("tried");
  } @catch (id any) {
    note("caught");
  } @finally {
    note("finally");
  }
  equalTexts(noted(), "tried finally");
}

BEHAVIOUR(theFirstHandlerOfAClassAboveCatches) {
  @try {
    @throw [[Trouble alloc] initWithName:@"T" reason:nil userInfo:nil];
  } @catch (Fault *fault) {
    note("Fault");
  } @catch (NSException *exception) {
    note("NSException");
  } @catch (Trouble *trouble) {
    note("Trouble");
  }
  equalTexts(noted(), "NSException");
}

BEHAVIOUR(aHandlerOfASubclassDoesNotCatch) {
  @try {
    @try {
      throwNamed(@"Plain");
    } @catch (Trouble *trouble) {
      note("inner");
    }
  } @catch (NSException *exception) {
    note("outer");
  }
  equalTexts(noted(), "outer");
}

BEHAVIOUR(anyObjectMayBeThrown) {
  Fault *fault = [Fault new];
  fault.code = 42;
  @try {
    @throw fault;
  } @catch (NSException *exception) {
    note("NSException");
  } @catch (Fault *caught) {
    same(caught, fault);
    equal(caught.code, 42);
  }
  equalTexts(noted(), "");
}

BEHAVIOUR(aStringMayBeThrown) {
  @try {
    @throw @"words";
  } @catch (NSString *words) {
    equalStrings(words, "words");
  }
}

BEHAVIOUR(idCatchesEveryObject) {
  Fault *fault = [Fault new];
  @try {
    @throw fault;
  } @catch (id any) {
    same(any, fault);
  }
}

BEHAVIOUR(dotsCatchEverything) {
  @try {
    throwNamed(@"Any");
  } @catch (...) {
    note("caught");
  }
  equalTexts(noted(), "caught");
}

BEHAVIOUR(finallyRunsOnTheWayOut) {
  @try {
    @try {
      throwNamed(@"Out");
    } @finally {
      note("finally");
    }
  } @catch (NSException *exception) {
    note("caught");
  }
  equalTexts(noted(), "finally caught");
}

BEHAVIOUR(finallyMayReturn) { equal(finallyThatReturns(), 5); }

BEHAVIOUR(finallyRunsAfterTheHandler) {
  @try {
    throwNamed(@"Order");
  } @catch (NSException *exception) {
    note("caught");
  } @finally {
    note("finally");
  }
  equalTexts(noted(), "caught finally");
}

BEHAVIOUR(aBareThrowThrowsTheSameAgain) {
  NSException *first = nil, *second = nil;
  @try {
    @try {
      throwNamed(@"Again");
    } @catch (NSException *exception) {
      first = exception;
      @throw;
    }
  } @catch (NSException *exception) {
    second = exception;
  }
  same(first, second);
  equalStrings(second.name, "Again");
}

BEHAVIOUR(aHandlerMayThrowAnother) {
  @try {
    @try {
      throwNamed(@"One");
    } @catch (NSException *exception) {
      throwNamed(@"Two");
    }
  } @catch (NSException *exception) {
    equalStrings(exception.name, "Two");
  }
}

BEHAVIOUR(aHandlerInsideAHandlerCatchesItsOwn) {
  @try {
    throwNamed(@"Outer");
  } @catch (NSException *outer) {
    @try {
      throwNamed(@"Inner");
    } @catch (NSException *inner) {
      equalStrings(inner.name, "Inner");
    }
    equalStrings(outer.name, "Outer");
  }
}

BEHAVIOUR(variablesAreReleasedOnTheWay) {
  @try {
    holdWhileThrowing();
  } @catch (NSException *exception) {
    note("caught");
  }
  // Only with -fobjc-arc-exceptions; otherwise ARC leaks what a frame holds.
  equalTexts(noted(), "gone caught");
}

BEHAVIOUR(raiseThrowsItself) {
  NSException *exception = [NSException exceptionWithName:@"N" reason:@"R" userInfo:nil];
  @try {
    [exception raise];
  } @catch (id caught) {
    same(caught, exception);
  }
}

BEHAVIOUR(raiseWithAFormatFillsIt) {
  @try {
    [NSException raise:@"Format" format:@"%d of %@", 3, @"four"];
  } @catch (NSException *exception) {
    equalStrings(exception.name, "Format");
    equalStrings(exception.reason, "3 of four");
  }
}

BEHAVIOUR(anUnknownMessageRaises) {
  id object = [Fault new];
  @try {
    [object performSelector:@selector(thisIsNowhere)];
  } @catch (NSException *exception) {
    equalStrings(exception.name, "NSInvalidArgumentException");
    equal([exception.reason hasPrefix:@"-[Fault thisIsNowhere]: unrecognized selector"], 1);
  }
}

BEHAVIOUR(thePlatformsOwnExceptionsAreCaught) {
  @try {
    [@"text" performSelector:@selector(objectAtIndex:) withObject:nil];
  } @catch (NSException *exception) {
    equal([exception isKindOfClass:[NSException class]], 1);
    equalStrings(exception.name, "NSInvalidArgumentException");
  }
}

BEHAVIOUR(exceptionsPassThroughBlocks) {
  void (^block)(void) = ^{
    throwNamed(@"FromBlock");
  };
  @try {
    block();
  } @catch (NSException *exception) {
    equalStrings(exception.name, "FromBlock");
  }
}

BEHAVIOUR(anExceptionThatWasCaughtIsFreed) {
  @autoreleasepool {
    @try {
      @throw [Kept new];
    } @catch (Kept *kept) {
      note("caught");
    }
  }
  equalTexts(noted(), "caught gone");
}

BEHAVIOUR(aLockIsLeftByAnException) {
  Fault *guard = [Fault new];
  @try {
    @synchronized(guard) {
      throwNamed(@"Inside");
    }
  } @catch (NSException *exception) {
    note("caught");
  }
  // Nobody holds it any more.
  equal(objc_sync_exit(guard), -1);
}
