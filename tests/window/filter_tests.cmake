# Tests of the filters in the real window.

set(filter_files filter_driver.cpp filter_expectations.cpp)

tavrin_add_window_test(window_filter_query_tests filter_query_test.cpp ${filter_files})
tavrin_add_window_test(window_filter_rule_tests filter_rules_test.cpp ${filter_files})
tavrin_add_window_test(window_filter_walk_tests
    filter_walk_test.cpp filter_model.cpp ${filter_files})
# The same walk each time, so that a failure can be seen again; without the variable, or with
# another seed, the program walks elsewhere.
set_tests_properties(window_filter_walk_tests PROPERTIES ENVIRONMENT "TAVRIN_WALK_SEED=1")

# The same test under several time zones. Wine takes a process's zone from the variable TZ of
# the outer system, as it is when the first program is started.
tavrin_add_test_program(window_filter_zone_tests
    SOURCES filter_time_zone_test.cpp ${filter_files} DEPENDS tavrin_window_harness)
add_dependencies(window_filter_zone_tests stage)
foreach(zone UTC Asia/Kolkata America/St_Johns Australia/Lord_Howe)
    add_test(NAME window_filter_zone_${zone} COMMAND window_filter_zone_tests --gtest_brief=1
        WORKING_DIRECTORY ${TAVRIN_STAGE_DIR})
    set_tests_properties(window_filter_zone_${zone} PROPERTIES
        ENVIRONMENT "TZ=${zone}" RUN_SERIAL TRUE TIMEOUT 60)
endforeach()
